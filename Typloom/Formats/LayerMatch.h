#pragma once

#include "Typloom/Formats/FamilyGlyphSource.h"

/// The layers of two readings of a glyph that are the same one: from the same file and at the same place.
/// Gives the second's identifiers by the first's.
std::map<std::string, std::string> matchLayers(TLGlyphState const& one,
    std::vector<LayerOrigin> const& originsOfOne, TLGlyphState const& other,
    std::vector<LayerOrigin> const& originsOfOther, TLFontState const& font);

/// Null when there is none.
LayerOrigin const* findOrigin(std::vector<LayerOrigin> const& origins, std::string const& layerId);
