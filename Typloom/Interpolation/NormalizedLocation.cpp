#include "Typloom/Interpolation/NormalizedLocation.h"

#include <algorithm>
#include <cmath>

bool VariationAxis::isInOrder() const
{
    return isDiscrete
        || (std::isfinite(minimum) && std::isfinite(maximum) && minimum <= fallback && fallback <= maximum);
}

/// (value - origin) / (end - origin), also where the differences are beyond the largest number.
static double ratio(double value, double origin, double end)
{
    double const extent = end - origin;
    return std::isfinite(extent) ? (value - origin) / extent
                                 : (value / 2 - origin / 2) / (end / 2 - origin / 2);
}

double normalizedValue(double designValue, VariationAxis const& axis)
{
    if (std::isnan(designValue)) {
        return 0;
    }
    double const value = std::clamp(designValue, axis.minimum, axis.maximum);
    if (value < axis.fallback) {
        return -ratio(value, axis.fallback, axis.minimum);
    }
    return value > axis.fallback ? ratio(value, axis.fallback, axis.maximum) : 0;
}

NormalizedLocation normalizedLocation(std::span<double const> coordinates)
{
    NormalizedLocation location;
    for (std::size_t axis = 0; axis < coordinates.size(); ++axis) {
        if (coordinates[axis] != 0) {
            location.push_back({ axis, coordinates[axis] });
        }
    }
    return location;
}
