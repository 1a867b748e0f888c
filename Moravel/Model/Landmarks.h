#pragma once

#include "Typloom/TyploomCore/TLFont.h"

/// Values in ascending order, each one once.
std::vector<double> distinctAscending(std::vector<double> values);

/// Where the glyph's intermediate layers stand on one of its own axes: distinct and ascending. A layer
/// without a place on it adds nothing.
std::vector<double> glyphAxisLandmarks(TLGlyph const& glyph, TLAxis const& axis);

/// The values between which a row's step buttons move: the landmarks and the default, distinct and ascending.
std::vector<double> stepPositions(std::vector<double> landmarks, double defaultValue);

/// Where a step from `value` leads: to the next position that is more than 0.001 away, or around
/// to the other end. None for fewer than two positions.
std::optional<double> nextStepPosition(std::vector<double> const& positions, double value, bool up);
