#pragma once

#include "Typloom/TyploomApp/CommandLine.h"
#include "Typloom/TyploomCore/TLLocation.h"

#include <memory>

class TLFont;
class TLGlyph;

/// Where coordinates by axis name lead in a family.
struct NamedLocation {
    TLLocation location;
    std::vector<std::string> notes; ///< A sentence for every value that was brought into its axis's range.
    std::optional<std::string> error; ///< An axis that is not there, with those that are.
};

/// A tag means the font axis; a name the glyph's axis first, then the font's. Values go no further than
/// the sliders do: to the ends of what masters (font axes) and layers (glyph axes) span.
/// Without a glyph (null) there are only font axes.
TYPLOOM_API NamedLocation LocationForNames(
    std::span<CommandLine::Coordinate const> coordinates, TLFont const& font, TLGlyph const* glyph);
