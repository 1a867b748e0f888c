#pragma once

#include "Typloom/TyploomCore/TLFont.h"

/// What a command on the masters and axes of a font does to its document. Each is one step of the history.

struct TLAddedMaster {
    std::shared_ptr<TLFontMaster> master; ///< Null when none was added.
    std::string problem {}; ///< Why not, a sentence; otherwise empty.
    std::vector<std::string> notes {}; ///< On glyphs that can't be interpolated there, a sentence each.
};

/// Where a master would stand for a place (design coordinates): on every axis of the font, on the default
/// where the place names no value, and no further than the axis reaches.
TYPLOOM_API TLLocation TLPlaceForMaster(TLFont const& font, TLLocation const& place);

/// Adds a master at `TLPlaceForMaster` behind the others. Every glyph that can be drawn, read for this if
/// need be, gets a layer of it that looks as the glyph does there; one that cannot be interpolated looks as
/// its nearest source.
///
/// A name that another master has gets a number. None is added without a name, or where a master or any
/// glyph's intermediate layer stands already. `goesOn` is asked after each glyph and told how many of how
/// many steps are done; when it says no, nothing changes and there is no problem to tell.
using TLMasterProgress = std::function<bool(std::size_t done, std::size_t steps)>;
TYPLOOM_API TLAddedMaster TLAddMaster(std::shared_ptr<TLFont> const& font, std::string const& name,
    TLLocation const& place, TLMasterProgress const& goesOn = {});

/// Why a master cannot be called that, a sentence; none when it can. `except` has the name now.
TYPLOOM_API std::optional<std::string> TLReasonAgainstMasterName(
    TLFont const& font, std::string_view name, TLFontMaster const* except = nullptr);

/// Why a master cannot stand on another value of an axis, a sentence; none when it can.
TYPLOOM_API std::optional<std::string> TLReasonAgainstMasterValue(
    TLFont const& font, TLFontMaster const& master, TLAxis const& axis, double value);

struct TLAxisBounds {
    double minimum { 0 };
    double defaultValue { 0 };
    double maximum { 1000 };
    bool operator==(TLAxisBounds const&) const = default;
};

/// Why an axis of the font cannot be called that, a sentence; none when it can. `except` has the name now.
TYPLOOM_API std::optional<std::string> TLReasonAgainstAxisName(
    TLFont const& font, std::string_view name, TLAxis const* except = nullptr);
TYPLOOM_API std::optional<std::string> TLReasonAgainstAxisTag(TLFont const& font, std::string_view tag);
TYPLOOM_API std::optional<std::string> TLReasonAgainstAxisBounds(TLAxisBounds const& bounds);

/// Adds an axis behind the others, on whose default everything stands. Null, and nothing changes, where
/// there is a reason against its name, tag or bounds.
TYPLOOM_API std::shared_ptr<TLAxis> TLAddAxis(std::shared_ptr<TLFont> const& font, std::string const& name,
    std::string const& tag, TLAxisBounds const& bounds);

/// Puts another object, of the same identifier, in the place of an axis of the font, with another name: those
/// who compare the objects see the change. Nothing changes where there is a reason against the name.
TYPLOOM_API void TLRenameAxis(
    std::shared_ptr<TLFont> const& font, TLAxis const& axis, std::string const& name);
