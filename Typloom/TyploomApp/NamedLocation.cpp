#include "Typloom/TyploomApp/NamedLocation.h"

#include "Platform/Foundation/NSNumberFormatter.h"
#include "Platform/Foundation/NSString.h"
#include "Typloom/TyploomApp/NameSearch.h"
#include "Typloom/TyploomCore/TLFont.h"

#include <algorithm>

namespace {
struct Target {
    std::shared_ptr<TLAxis> axis;
    TLClosedRange range;
};

TLClosedRange rangeOfFontAxis(TLFont const& font, TLAxis const& axis)
{
    std::vector<double> values;
    for (auto const& master : font.fontMasters()) {
        values.push_back(master->axisInternalValueValueForId(axis.axisId()));
    }
    if (values.empty()) {
        return { axis.defaultValue(), axis.defaultValue() };
    }
    auto const [lower, upper] = std::ranges::minmax(values);
    return { lower, upper };
}

std::shared_ptr<TLAxis> axisNamed(std::vector<std::shared_ptr<TLAxis>> const& axes, std::string const& name)
{
    auto const found
        = std::ranges::find_if(axes, [&](auto const& axis) { return NSStringIsEqual(axis->name(), name); });
    return found == axes.end() ? nullptr : *found;
}

std::optional<Target> findAxis(std::string const& name, TLFont const& font, TLGlyph const* glyph)
{
    auto const& fontAxes = font.canonicalAxes();
    auto const tagged
        = std::ranges::find_if(fontAxes, [&](auto const& axis) { return axis->axisTag() == name; });
    if (tagged != fontAxes.end()) {
        return Target { *tagged, rangeOfFontAxis(font, **tagged) };
    }
    if (auto const axis = glyph ? axisNamed(glyph->axes(), name) : nullptr) {
        auto const ranges = glyph->internalAxisRanges(std::nullopt);
        auto const range = ranges.find(axis);
        return Target { axis,
            range != ranges.end() ? range->second
                                  : TLClosedRange { axis->defaultValue(), axis->defaultValue() } };
    }
    if (auto const axis = axisNamed(fontAxes, name)) {
        return Target { axis, rangeOfFontAxis(font, *axis) };
    }
    return std::nullopt;
}

std::string unknownAxis(std::string const& name, TLFont const& font, TLGlyph const* glyph)
{
    std::vector<std::string> known;
    for (auto const& axis : font.canonicalAxes()) {
        known.push_back(axis->axisTag() ? *axis->axisTag() : axis->name());
        if (axis->axisTag() && axis->name() != *axis->axisTag()) {
            known.push_back(axis->name());
        }
    }
    if (glyph) {
        std::ranges::transform(
            glyph->axes(), std::back_inserter(known), [](auto const& axis) { return axis->name(); });
    }
    return "There is no axis '" + name + "'; axes by tag and name: " + ListOfNamesLike(name, known);
}
} // namespace

NamedLocation LocationForNames(
    std::span<CommandLine::Coordinate const> coordinates, TLFont const& font, TLGlyph const* glyph)
{
    NamedLocation result;
    for (auto const& [name, value] : coordinates) {
        auto const target = findAxis(name, font, glyph);
        if (!target) {
            result.error = unknownAxis(name, font, glyph);
            return result;
        }
        auto const [lower, upper] = target->range;
        auto const reached = std::clamp(value, lower, upper);
        if (reached != value) {
            result.notes.push_back("The axis '" + target->axis->name() + "' goes from "
                + NSNumberDescription(lower) + " to " + NSNumberDescription(upper) + "; "
                + NSNumberDescription(value) + " became " + NSNumberDescription(reached));
        }
        if (!result.location.emplace(target->axis->axisId(), reached).second) {
            result.error
                = "The location names the axis '" + target->axis->name() + "' by its tag and by its name";
            return result;
        }
    }
    return result;
}
