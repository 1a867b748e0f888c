#pragma once

#include "Typloom/Formats/Plist.h"

/// An axis that belongs to one glyph, in design coordinates.
struct LocalAxis {
    /// What a person sees: "rotate" for the entries "rotate*1" and "rotate*2", which are one axis.
    std::string name;
    double minimum { 0 };
    double fallback { 0 };
    double maximum { 0 };
    std::vector<std::string> parts; ///< The names of its entries, those that locations use.
    bool operator==(LocalAxis const&) const = default;
};

/// A source of one glyph, which stands on axes of the font and of the glyph.
struct LocalSource {
    std::string name; ///< May be empty.
    std::optional<std::string> layerName; ///< None: the UFO's default layer.
    std::map<std::string, double, std::less<>> location; ///< By axis name; absent: the axis default.
    bool operator==(LocalSource const&) const = default;
};

/// A glyph's own axes and sources: the library entry "com.black-foundry.glyph-designspace".
struct GlyphDesignspace {
    std::vector<LocalAxis> axes;
    std::vector<LocalSource> sources;
};

/// What can't be used is left out and gets a sentence in `report`.
GlyphDesignspace readGlyphDesignspace(
    PlistValue const& entry, std::string_view glyphName, std::vector<std::string>& report);
