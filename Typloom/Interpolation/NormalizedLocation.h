#pragma once

#include <cstddef>
#include <span>
#include <vector>

/// Where an axis begins, rests and ends, in design coordinates.
struct VariationAxis {
    double minimum { 0 };
    double fallback { 0 }; ///< The axis default.
    double maximum { 0 };
    bool isDiscrete { false }; ///< Nothing is interpolated along it.
    bool operator==(VariationAxis const&) const = default;

    /// Whether minimum <= default <= maximum, all finite; a discrete axis has no order to keep.
    bool isInOrder() const;
};

/// A design coordinate on the scale of the model: -1 at the minimum, 0 at the default, 1 at the
/// maximum, and nothing beyond. 0 everywhere on the side of the default that has no extent.
double normalizedValue(double designValue, VariationAxis const& axis);

/// A coordinate that is not 0, of a location in normalised coordinates.
struct NormalizedCoordinate {
    std::size_t axis { 0 };
    double value { 0 };
    bool operator==(NormalizedCoordinate const&) const = default;
};

/// The coordinates that are not 0, in the order of the axes.
using NormalizedLocation = std::vector<NormalizedCoordinate>;

/// The location without its zeros. `coordinates` holds one normalised value for each axis.
NormalizedLocation normalizedLocation(std::span<double const> coordinates);
