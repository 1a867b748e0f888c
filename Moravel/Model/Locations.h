#pragma once

#include "Typloom/TyploomCore/TLFont.h"
#include "Typloom/TyploomCore/TLLayer.h"

/// A row's value on its way to the host: one decimal place, halves away from zero
/// (0.25 -> 0.3, -0.25 -> -0.3).
double roundedToTenths(double value);

/// The entries of a display location that are numbers; without one, no entries.
TLLocation numericLocation(std::optional<TLLocation> const& displayLocation);

/// Where the view stands with no layer edited: the display location, on axes that it leaves open the
/// master's value (0 without a master).
TLLocation fontLocation(
    TLFont const& font, TLFontMaster const* currentMaster, std::optional<TLLocation> const& displayLocation);

/// Where the view stands with a layer edited: the display location, on axes that it leaves open the
/// layer's own value, or the axis default where the layer has none.
TLLocation layerLocation(TLLayer const& layer, std::optional<TLLocation> const& displayLocation);
