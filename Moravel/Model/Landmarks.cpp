#include "Moravel/Model/Landmarks.h"

#include "Moravel/Model/AxisRanges.h"

#include <algorithm>

std::vector<double> distinctAscending(std::vector<double> values)
{
    std::ranges::sort(values);
    auto const repeated = std::ranges::unique(values);
    values.erase(repeated.begin(), repeated.end());
    return values;
}

std::vector<double> glyphAxisLandmarks(TLGlyph const& glyph, TLAxis const& axis)
{
    auto const& spread = glyph.spreadOnAxis(axis);
    auto landmarks = spread.intermediateValues;
    auto const font = glyph.font();
    auto const fontAxis = font ? font->axisForId(axis.axisId()) : nullptr;
    if (!fontAxis) {
        return landmarks;
    }
    // On an axis that is the font's too the layers without a coordinate stand at its default.
    auto const countOfIntermediates = std::ranges::count_if(
        glyph.layers(), [](auto const& entry) { return entry.second->isBraceLayer(); });
    if (static_cast<std::size_t>(countOfIntermediates) > spread.countOfIntermediateValues) {
        landmarks.push_back(fontAxis->defaultValue());
    }
    return distinctAscending(std::move(landmarks));
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
