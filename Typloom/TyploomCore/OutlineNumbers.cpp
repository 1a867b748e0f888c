#include "Typloom/TyploomCore/OutlineNumbers.h"

#include <algorithm>

std::vector<double> outlineNumbers(TLOutline const& outline)
{
    std::vector<double> numbers { outline.advance, outline.height };
    for (auto const& contour : outline.contours) {
        for (auto const& point : contour.points) {
            numbers.insert(numbers.end(), { point.x, point.y });
        }
    }
    for (auto const& component : outline.components) {
        numbers.insert(numbers.end(), component.transform.begin(), component.transform.end());
    }
    for (auto const& anchor : outline.anchors) {
        numbers.insert(numbers.end(), { anchor.x, anchor.y });
    }
    return numbers;
}

/// Put together rather than copied and changed: a copy of a point copies its name, which hardly any has.
static TLContour contourWithNumbers(TLContour const& shape, double const*& next)
{
    TLContour contour;
    contour.points.reserve(shape.points.size());
    for (auto const& point : shape.points) {
        contour.points.push_back({ next[0], next[1], point.type, point.smooth, {} });
        next += 2;
        if (!point.name.empty()) {
            contour.points.back().name = point.name;
        }
    }
    return contour;
}

TLOutline outlineWithNumbers(TLOutline const& shape, std::span<double const> numbers)
{
    TLOutline outline;
    auto const* next = numbers.data();
    outline.advance = *next++;
    outline.height = *next++;
    outline.contours.reserve(shape.contours.size());
    for (auto const& contour : shape.contours) {
        outline.contours.push_back(contourWithNumbers(contour, next));
    }
    outline.components = shape.components;
    for (auto& component : outline.components) {
        for (double& number : component.transform) {
            number = *next++;
        }
    }
    if (next != numbers.data() + numbers.size()) {
        outline.anchors = shape.anchors;
    }
    for (auto& anchor : outline.anchors) {
        anchor.x = *next++;
        anchor.y = *next++;
    }
    return outline;
}

std::size_t countOfAnchorNumbers(TLOutline const& outline)
{
    return 2 * outline.anchors.size();
}

static std::string counts(std::size_t left, std::size_t right, std::string const& what)
{
    return std::to_string(left) + " and " + std::to_string(right) + ' ' + what;
}

static std::optional<std::string> contourDifference(TLContour const& left, TLContour const& right)
{
    if (left.points.size() != right.points.size()) {
        return "has " + counts(left.points.size(), right.points.size(), "points");
    }
    auto const [point, other] = std::mismatch(left.points.begin(), left.points.end(), right.points.begin(),
        [](auto const& a, auto const& b) { return a.type == b.type; });
    if (point == left.points.end()) {
        return std::nullopt;
    }
    return "differs in the type of point " + std::to_string(point - left.points.begin() + 1);
}

std::optional<std::string> shapeDifference(TLOutline const& left, TLOutline const& right)
{
    if (left.contours.size() != right.contours.size()) {
        return "they have " + counts(left.contours.size(), right.contours.size(), "contours");
    }
    for (std::size_t i = 0; i < left.contours.size(); ++i) {
        if (auto const difference = contourDifference(left.contours[i], right.contours[i])) {
            return "contour " + std::to_string(i + 1) + ' ' + *difference;
        }
    }
    if (left.components.size() != right.components.size()) {
        return "they have " + counts(left.components.size(), right.components.size(), "components");
    }
    for (std::size_t i = 0; i < left.components.size(); ++i) {
        if (left.components[i].base != right.components[i].base) {
            return "component " + std::to_string(i + 1) + " is '" + left.components[i].base + "' and '"
                + right.components[i].base + '\'';
        }
    }
    return std::nullopt;
}

bool haveSameAnchors(TLOutline const& left, TLOutline const& right)
{
    return std::equal(left.anchors.begin(), left.anchors.end(), right.anchors.begin(), right.anchors.end(),
        [](auto const& a, auto const& b) { return a.name == b.name; });
}
