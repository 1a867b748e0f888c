#include "Moravel/Model/Landmarks.h"

#include "Moravel/Model/AxisRanges.h"
#include "Typloom/TyploomCore/TLFontMaster.h"

#include <algorithm>

std::vector<double> distinctAscending(std::vector<double> values)
{
    std::ranges::sort(values);
    auto const repeated = std::ranges::unique(values);
    values.erase(repeated.begin(), repeated.end());
    return values;
}

std::vector<double> fontAxisLandmarks(
    std::vector<std::shared_ptr<TLFontMaster>> const& masters, std::string_view axisId)
{
    std::vector<double> values;
    values.reserve(masters.size());
    for (auto const& master : masters) {
        values.push_back(master->axisInternalValueValueForId(axisId));
    }
    return distinctAscending(std::move(values));
}

std::vector<std::vector<double>> glyphAxisLandmarks(
    TLLayerDictionary const& layers, std::vector<std::shared_ptr<TLAxis>> const& axes)
{
    std::vector<std::vector<double>> values(axes.size());
    for (auto const& [layerId, layer] : layers) {
        if (!layer->isBraceLayer()) {
            continue;
        }
        for (std::size_t index = 0; index < axes.size(); ++index) {
            if (auto const value = layer->axisInternalValueValue(axes[index]->axisId())) {
                values[index].push_back(*value);
            }
        }
    }
    for (auto& list : values) {
        list = distinctAscending(std::move(list));
    }
    return values;
}

std::vector<double> stepPositions(std::vector<double> landmarks, double defaultValue)
{
    landmarks.push_back(defaultValue);
    return distinctAscending(std::move(landmarks));
}

std::optional<double> nextStepPosition(std::vector<double> const& positions, double value, bool up)
{
    if (positions.size() < 2) {
        return std::nullopt;
    }
    if (up) {
        auto const next = std::ranges::upper_bound(positions, value + landmarkTolerance);
        return next == positions.end() ? positions.front() : *next;
    }
    auto const following = std::ranges::lower_bound(positions, value - landmarkTolerance);
    return following == positions.begin() ? positions.back() : *std::prev(following);
}
