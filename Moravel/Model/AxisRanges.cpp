#include "Moravel/Model/AxisRanges.h"

#include <algorithm>
#include <cmath>

double AxisRange::span() const
{
    return std::abs(upper - lower);
}

AxisRange fontAxisRange(std::span<double const> landmarks, double defaultValue)
{
    if (landmarks.empty()) {
        return { defaultValue, defaultValue, defaultValue };
    }
    return { landmarks.front(), defaultValue, landmarks.back() };
}

double glyphAxisDefault(TLAxis const& axis, TLLayer const* defaultLayer)
{
    auto const own = defaultLayer ? defaultLayer->axisInternalValueValue(axis.axisId()) : std::nullopt;
    return own.value_or(axis.defaultValue());
}

std::vector<double> rangeList(AxisRange const& range)
{
    return { range.lower, range.fallback, range.upper };
}

AxisRange rangeOfRowContent(RowContent const& content)
{
    if (content.range && content.range->size() == 3) {
        return { (*content.range)[0], (*content.range)[1], (*content.range)[2] };
    }
    auto const value = content.axis ? content.axis->defaultValue() : 0;
    return { value, value, value };
}

bool isUsable(Section section, AxisRange const& range, std::optional<std::vector<double>> const& landmarks)
{
    if (section == Section::font) {
        return range.span() >= minimumFontAxisSpan;
    }
    return landmarks && std::ranges::any_of(*landmarks, [&](double landmark) {
        return std::abs(landmark - range.fallback) > landmarkTolerance;
    });
}

int fractionDigitsForSpan(double span)
{
    auto const units = std::ceil(span);
    if (units < 2) {
        return 3;
    }
    return units < 10 ? 1 : 0;
}
