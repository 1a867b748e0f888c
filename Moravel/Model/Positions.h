#pragma once

#include "Typloom/TyploomCore/TLAxis.h"
#include "Typloom/TyploomCore/TLFontMaster.h"
#include "Typloom/TyploomCore/TLLayer.h"

/// Where the edit view stands on a font axis, in design coordinates: where the layer says that it
/// stands; else at the display location's number; else at the current master's value. Each of them may be
/// absent, and 0 is left without any.
double fontAxisPosition(std::string_view axisId, TLLayer const* layer,
    std::optional<TLLocation> const& displayLocation, TLFontMaster const* currentMaster);

/// Where the edit view stands on an axis of the glyph: where the layer says, else at the axis's default.
double glyphAxisPosition(TLAxis const& axis, TLLayer const& layer);
