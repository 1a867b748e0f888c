#include "Typloom/Interpolation/Supports.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <set>
#include <utility>

namespace {

/// Coordinates of sources that have no other: the points on the axes.
using AxisPoints = std::set<std::pair<std::size_t, double>>;

AxisPoints axisPoints(std::span<NormalizedLocation const> locations)
{
    AxisPoints points;
    for (auto const& location : locations) {
        if (location.size() == 1) {
            points.emplace(location.front().axis, location.front().value);
        }
    }
    return points;
}

std::ptrdiff_t countOnPoints(NormalizedLocation const& location, AxisPoints const& points)
{
    return std::count_if(location.begin(), location.end(), [&](auto const& coordinate) {
        return points.contains({ coordinate.axis, coordinate.value });
    });
}

template <class Projection>
int compareEach(NormalizedLocation const& left, NormalizedLocation const& right, Projection projection)
{
    for (std::size_t i = 0; i < left.size(); ++i) {
        auto const a = projection(left[i]);
        auto const b = projection(right[i]);
        if (a != b) {
            return a < b ? -1 : 1;
        }
    }
    return 0;
}

/// Of two locations with the same number of axes.
bool comesBefore(NormalizedLocation const& left, NormalizedLocation const& right)
{
    if (int const order = compareEach(left, right, [](auto const& item) { return item.axis; })) {
        return order < 0;
    }
    if (int const order = compareEach(left, right, [](auto const& item) { return item.value > 0; })) {
        return order < 0;
    }
    return compareEach(left, right, [](auto const& item) { return std::abs(item.value); }) < 0;
}

/// Both of the same axes.
bool liesInside(NormalizedLocation const& peaks, Support const& support)
{
    for (std::size_t i = 0; i < support.size(); ++i) {
        double const value = peaks[i].value;
        auto const& box = support[i];
        if (value != box.peak && !(box.lower < value && value < box.upper)) {
            return false;
        }
    }
    return true;
}

/// Cuts the support so that an earlier source's peak inside it comes to lie on its border: on the
/// axis on which the least is lost, or on all of them when several are equal in that.
void cut(Support& support, NormalizedLocation const& peaks)
{
    auto ratioOnAxis = [&](std::size_t i) {
        auto const& box = support[i];
        double const value = peaks[i].value;
        double const bound = value < box.peak ? box.lower : box.upper;
        return value == box.peak ? -1.0 : (value - box.peak) / (bound - box.peak);
    };
    double best = -1;
    for (std::size_t i = 0; i < support.size(); ++i) {
        best = std::max(best, ratioOnAxis(i));
    }
    for (std::size_t i = 0; best >= 0 && i < support.size(); ++i) {
        if (ratioOnAxis(i) == best) {
            (peaks[i].value < support[i].peak ? support[i].lower : support[i].upper) = peaks[i].value;
        }
    }
}

} // namespace

std::vector<std::size_t> sortedSources(std::span<NormalizedLocation const> locations)
{
    auto const points = axisPoints(locations);
    std::vector<std::ptrdiff_t> onPoints(locations.size());
    std::transform(locations.begin(), locations.end(), onPoints.begin(),
        [&](auto const& location) { return countOnPoints(location, points); });
    std::vector<std::size_t> order(locations.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
        if (locations[left].size() != locations[right].size()) {
            return locations[left].size() < locations[right].size();
        }
        if (onPoints[left] != onPoints[right]) {
            return onPoints[left] > onPoints[right];
        }
        return comesBefore(locations[left], locations[right]);
    });
    return order;
}

std::vector<Support> supports(std::span<NormalizedLocation const> sortedLocations)
{
    std::vector<Support> result;
    result.reserve(sortedLocations.size());
    // Only sources of the same axes limit each other.
    std::map<std::vector<std::size_t>, std::vector<NormalizedLocation const*>> earlierOfSameAxes;
    for (auto const& location : sortedLocations) {
        std::vector<std::size_t> axes;
        Support support;
        for (auto const& [axis, value] : location) {
            axes.push_back(axis);
            support.push_back({ axis, value < 0 ? -1.0 : 0.0, value, value < 0 ? 0.0 : 1.0 });
        }
        auto& earlier = earlierOfSameAxes[axes];
        for (auto const* peaks : earlier) {
            if (liesInside(*peaks, support)) {
                cut(support, *peaks);
            }
        }
        earlier.push_back(&location);
        result.push_back(std::move(support));
    }
    return result;
}

double supportScalar(std::span<AxisSupport const> support, std::span<double const> place)
{
    double scalar = 1;
    for (auto const& [axis, lower, peak, upper] : support) {
        double const value = place[axis];
        if (value == peak) {
            continue;
        }
        if (value <= lower || value >= upper) {
            return 0;
        }
        scalar *= value < peak ? (value - lower) / (peak - lower) : (upper - value) / (upper - peak);
    }
    return scalar;
}
