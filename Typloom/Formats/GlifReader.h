#pragma once

#include "Typloom/Formats/Plist.h"
#include "Typloom/TyploomCore/TLOutline.h"

/// What a .glif file (format 1 or 2) says of a glyph in one layer.
struct Glif {
    TLOutline outline; ///< Variable components included, behind the others.
    std::vector<char32_t> unicodes;
    std::optional<PlistValue> glyphDesignspace; ///< The library's entry on the glyph's own axes.
    std::optional<PlistValue> glyphAxes; ///< That under `glyphAxesKey`.
};

Result<Glif> readGlif(std::string text, std::string displayName);

/// The characters that a .glif names, found without parsing it.
std::vector<char32_t> findUnicodes(std::string_view glifText);
