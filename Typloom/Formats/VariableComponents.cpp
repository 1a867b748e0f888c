#include "Typloom/Formats/VariableComponents.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <tuple>

namespace {

using Matrix = std::array<double, 6>;

/// First `inner`, then `outer`.
Matrix product(Matrix const& outer, Matrix const& inner)
{
    auto const& [a, b, c, d, e, f] = outer;
    return { a * inner[0] + c * inner[1], b * inner[0] + d * inner[1], a * inner[2] + c * inner[3],
        b * inner[2] + d * inner[3], a * inner[4] + c * inner[5] + e, b * inner[4] + d * inner[5] + f };
}

double radians(double degrees)
{
    return degrees * std::numbers::pi / 180;
}

std::optional<std::string> readComponent(PlistValue const& entry, TLComponent& component)
{
    auto const* base = entry.find("base");
    if (!base || !base->string() || base->string()->empty()) {
        return "a variable component names no glyph";
    }
    component.base = *base->string();
    component.isVariable = true;
    auto const notANumber = [&component](std::string const& key) {
        return "a number of the variable component " + inQuotes(component.base) + " is none (" + inQuotes(key)
            + ")";
    };
    if (auto const* location = entry.find("location"); location && location->dictionary()) {
        for (auto const& [axisName, value] : *location->dictionary()) {
            if (!value.number()) {
                return notANumber(axisName);
            }
            component.location[axisName] = *value.number();
        }
    }
    DecomposedTransformation parts;
    std::pair<char const*, double*> const fields[] {
        { "translateX", &parts.translateX },
        { "translateY", &parts.translateY },
        { "rotation", &parts.rotation },
        { "scaleX", &parts.scaleX },
        { "scaleY", &parts.scaleY },
        { "skewX", &parts.skewX },
        { "skewY", &parts.skewY },
        { "tCenterX", &parts.tCenterX },
        { "tCenterY", &parts.tCenterY },
    };
    auto const* transformation = entry.find("transformation");
    for (auto const& [key, field] : fields) {
        auto const* value = transformation ? transformation->find(key) : nullptr;
        if (value && !value->number()) {
            return notANumber(key);
        }
        *field = value ? *value->number() : *field;
    }
    component.transform = parts.matrix();
    if (!std::all_of(component.transform.begin(), component.transform.end(),
            [](double number) { return std::isfinite(number); })) {
        return "the transformation of the variable component " + inQuotes(component.base) + " is no place";
    }
    return std::nullopt;
}

} // namespace

Matrix DecomposedTransformation::matrix() const
{
    double const sine = std::sin(radians(rotation));
    double const cosine = std::cos(radians(rotation));
    auto result = Matrix { 1, 0, 0, 1, translateX + tCenterX, translateY + tCenterY };
    result = product(result, { cosine, sine, -sine, cosine, 0, 0 });
    result = product(result, { scaleX, 0, 0, scaleY, 0, 0 });
    result = product(result, { 1, std::tan(radians(skewY)), std::tan(radians(skewX)), 1, 0, 0 });
    return product(result, { 1, 0, 0, 1, -tCenterX, -tCenterY });
}

std::optional<std::string> appendVariableComponents(
    PlistValue const& entry, std::vector<TLComponent>& components)
{
    if (!entry.array()) {
        return "its variable components are no list";
    }
    for (auto const& item : *entry.array()) {
        TLComponent component;
        if (auto problem = readComponent(item, component)) {
            return problem;
        }
        components.push_back(std::move(component));
    }
    return std::nullopt;
}

PlistValue transformationEntry(Matrix const& matrix)
{
    auto const& [a, b, c, d, x, y] = matrix;
    double const degrees = 180 / std::numbers::pi;
    double const scaleX = b == 0 ? a : std::hypot(a, b);
    double const skew = scaleX == 0 ? 0 : std::atan((a * c + b * d) / (scaleX * scaleX)) * degrees;
    std::tuple<char const*, double, double> const fields[] {
        { "translateX", x, 0 },
        { "translateY", y, 0 },
        { "rotation", b == 0 ? 0 : std::atan2(b, a) * degrees, 0 },
        { "scaleX", scaleX, 1 },
        { "scaleY", b == 0 ? d : (a * d - b * c) / scaleX, 1 },
        { "skewX", skew, 0 },
    };
    PlistValue::Dictionary entries;
    for (auto const& [key, value, fallback] : fields) {
        if (value != fallback) {
            entries.emplace(key, PlistValue { value + 0.0 });
        }
    }
    return { std::move(entries) };
}
