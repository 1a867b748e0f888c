#pragma once

#include "Typloom/TyploomCore/TLGlyph.h"

#include <vector>

/// Values in ascending order, each one once.
std::vector<double> distinctAscending(std::vector<double> values);

/// Where the masters stand on a font axis: distinct design coordinates, ascending.
std::vector<double> fontAxisLandmarks(
    std::vector<std::shared_ptr<TLFontMaster>> const& masters, std::string_view axisId);

/// Where the glyph's intermediate layers stand on each of its own axes: one list for each of
/// `axes`, in their order, distinct and ascending. A layer without a place on an axis adds nothing there.
std::vector<std::vector<double>> glyphAxisLandmarks(
    TLLayerDictionary const& layers, std::vector<std::shared_ptr<TLAxis>> const& axes);

/// The values between which a row's step buttons move: the landmarks and the default, distinct and ascending.
std::vector<double> stepPositions(std::vector<double> landmarks, double defaultValue);

/// Where a step from `value` leads: to the next position that is more than 0.001 away, or around
/// to the other end. None for fewer than two positions.
std::optional<double> nextStepPosition(std::vector<double> const& positions, double value, bool up);
