#pragma once

#include "Typloom/TyploomCore/TLFont.h"

/// Takes along what hangs on the axes and masters that have changed since the given states: locations of
/// variable components name axes of glyphs and of the font by their names, and a glyph's own layers on
/// a master's place are found by that place. `fontBefore` is null when the font itself did not change.
/// Reads the glyphs that are concerned. `glyphsWithLocations` is filled when it is needed and empty, and lets
/// the next call do without a search through the files.
void carryNames(TLFont& font, std::map<std::string, TLGlyphState> const& glyphsBefore,
    TLFontState const* fontBefore, std::optional<std::vector<std::string>>& glyphsWithLocations);
