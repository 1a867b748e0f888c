#pragma once

#include "Typloom/TyploomCore/TLFont.h"

/// How big a family is.
struct FamilySize {
    char const* name;
    std::size_t axes;
    std::size_t masters;
    std::size_t layers; ///< Of the glyph "big", those of masters included.
    std::size_t glyphAxes; ///< Of the glyph "big".
};

inline constexpr FamilySize familySizes[] = {
    { "T", 3, 6, 20, 0 },
    { "B", 16, 60, 200, 4 },
    { "X", 256, 1024, 4096, 64 },
};

/// Every axis goes from 0, the default, to 1000.
inline constexpr double axisEnd = 1000;

/// Characters of the private use area, for lines of text.
inline constexpr char32_t bigCharacter = 0xE000;
inline constexpr char32_t firstRingCharacter = 0xE001;

std::string axisName(std::size_t index);
std::string glyphAxisName(std::size_t index);

/// Where a master stands: the first at the default, the others each on one axis, in turn.
TLCoordinates masterPlace(FamilySize const& size, std::size_t master);
/// Where an intermediate layer of the glyph "big" stands: between the sources of two axes, no two at one
/// place.
TLCoordinates layerPlace(FamilySize const& size, std::size_t layer);

/// A ring of curves, 96 points, which no place of the design space makes cross itself.
TLOutline ringOutline(std::size_t glyph, double growth);
double growthAt(TLCoordinates const& place);

/// A family in memory: "big", and `glyphs` others with a layer of each master, named "ring0" and so on.
std::shared_ptr<TLFont> syntheticFamily(FamilySize const& size, std::size_t glyphs);
