#pragma once

#include "Typloom/TyploomCore/TLFont.h"

/// Design units. Two values are one place on an axis when they differ by less than this.
inline constexpr double matchingTolerance = 1e-5;

/// Whether a master stands at the location on every font axis; an axis that the location leaves open is
/// looked for at its default. Without axes every master does.
bool masterMatchesLocation(TLFontMaster const& master, TLFont const& font, TLLocation const& location);

/// The first of the font's masters that stands at the location, null when none does.
std::shared_ptr<TLFontMaster> matchingMaster(TLFont const& font, TLLocation const& location);

/// Whether a layer stands at the location on every axis that applies to the glyph. What the location
/// leaves open, and where the layer has no place, counts as the axis default.
bool layerMatchesLocation(TLLayer const& layer, TLGlyph const& glyph, TLLocation const& location);

/// The first master or intermediate layer that stands at the location, those associated with the given
/// master before all others; null when none does.
std::shared_ptr<TLLayer> matchingLayer(
    TLGlyph const& glyph, TLLocation const& location, std::optional<std::string> const& associatedMasterId);
