#pragma once

#include "Typloom/Formats/Plist.h"

inline constexpr std::string_view glyphDesignspaceKey = "com.black-foundry.glyph-designspace";
/// Beside it, a dictionary by axis name: what the entry above has no place for. An axis whose name holds an
/// asterisk and that is here is no dimension of another.
inline constexpr std::string_view glyphAxesKey = "org.typloom.glyph-axes";
/// In a source of the entry above, a dictionary: its place on axes of the font whose names axes of the
/// glyph have taken.
inline constexpr std::string_view hiddenLocationKey = "org.typloom.hidden-location";

/// An axis that belongs to one glyph, in design coordinates.
struct LocalAxis {
    /// What a person sees: "rotate" for the entries "rotate*1" and "rotate*2", which are one axis.
    std::string name;
    double minimum { 0 };
    double fallback { 0 };
    double maximum { 0 };
    std::vector<std::string> parts; ///< The names of its entries, those that locations use.
    std::optional<std::string> axisId {}; ///< The identifier that the file keeps for it.
    bool operator==(LocalAxis const&) const = default;
};

/// A source of one glyph, which stands on axes of the font and of the glyph.
struct LocalSource {
    std::string name; ///< May be empty.
    std::optional<std::string> layerName; ///< None: the UFO's default layer.
    std::map<std::string, double, std::less<>> location; ///< By axis name; absent: the axis default.
    std::map<std::string, double, std::less<>> hiddenLocation {}; ///< See `hiddenLocationKey`.
    bool operator==(LocalSource const&) const = default;
};

/// A glyph's own axes and sources.
struct GlyphDesignspace {
    std::vector<LocalAxis> axes;
    std::vector<LocalSource> sources;
};

/// `identities` is the entry under `glyphAxesKey`, null when there is none. What can't be used is left out
/// and gets a sentence in `report`.
GlyphDesignspace readGlyphDesignspace(PlistValue const& entry, PlistValue const* identities,
    std::string_view glyphName, std::vector<std::string>& report);

/// The identifier of an axis for which the file keeps none.
std::string derivedAxisId(std::string_view glyphName, std::string_view axisName);
/// What a person sees of the name of an entry: "rotate" of "rotate*1".
std::string baseAxisName(std::string_view entryName);
