#pragma once

#include "Typloom/Interpolation/NormalizedLocation.h"

/// The reach of a source on one axis: full at the peak, falling in straight lines to nothing at
/// the ends. Normalised coordinates.
struct AxisSupport {
    std::size_t axis { 0 };
    double lower { 0 };
    double peak { 0 };
    double upper { 0 };
    bool operator==(AxisSupport const&) const = default;
};

/// The reach of a source on all its axes; empty for the source at the default, which reaches
/// everywhere.
using Support = std::vector<AxisSupport>;

/// The order in which the model takes its sources, as indices: fewer axes first; of those, the ones
/// with more coordinates that a source on a single axis has too; then by axes, signs and distances.
/// Equal locations are neighbours, in their own order.
std::vector<std::size_t> sortedSources(std::span<NormalizedLocation const> locations);

/// The support of each location, given in the model's order. A source reaches to the end of the
/// axis (-1 or 1), or to the peak of an earlier source of the same axes that would lie inside.
std::vector<Support> supports(std::span<NormalizedLocation const> sortedLocations);

/// How much of the support's source counts at a place, from 0 to 1. `place` holds a normalised
/// value for each axis.
double supportScalar(std::span<AxisSupport const> support, std::span<double const> place);
