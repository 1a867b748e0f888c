#pragma once

#include "Typloom/TyploomCore/TLFont.h"

/// The layer of a glyph that stands at a place of its design space (design coordinates), by where layers
/// really stand. Of several, the first that is associated with the given master, otherwise the
/// first in the order of `layers`. Axes that the place does not name stand at their default. Null when
/// there is none.
TYPLOOM_API std::shared_ptr<TLLayer> TLLayerAtPlace(
    TLGlyph const& glyph, TLLocation const& place, std::optional<std::string> const& preferredMasterId);

/// The first master that stands at a place; null when there is none.
TYPLOOM_API std::shared_ptr<TLFontMaster> TLMasterAtPlace(TLFont const& font, TLLocation const& place);

/// The master nearest to a place, in lengths of the axes; null when there is none.
TYPLOOM_API std::shared_ptr<TLFontMaster> TLMasterNearestTo(TLFont const& font, TLLocation const& place);

/// The place with an entry for each of the axes: its default where the place names no number.
TYPLOOM_API TLLocation TLCompletedPlace(
    std::vector<std::shared_ptr<TLAxis>> const& axes, TLLocation const& place);
