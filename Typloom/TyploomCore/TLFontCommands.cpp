#include "Typloom/TyploomCore/TLFontCommands.h"

#include "Platform/Foundation/NSString.h"
#include "Typloom/TyploomCore/Storable.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <algorithm>

namespace {

std::string inQuotes(std::string const& name)
{
    return '\'' + name + '\'';
}

} // namespace

std::optional<std::string> TLReasonAgainstAxisName(
    TLFont const& font, std::string_view name, TLAxis const* except)
{
    if (NSStringByTrimming(name, NSCharacterSet::whitespaceAndNewlines).empty()) {
        return "An axis needs a name.";
    }
    for (auto const& axis : font.canonicalAxes()) {
        if (axis.get() != except && NSStringIsEqual(axis->name(), name)) {
            return "There is an axis " + inQuotes(axis->name()) + " already.";
        }
    }
    return std::nullopt;
}

std::optional<std::string> TLReasonAgainstAxisTag(TLFont const& font, std::string_view tag)
{
    auto const isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    bool const isWellFormed = tag.size() == 4 && isLetter(tag.front())
        && std::all_of(tag.begin(), tag.end(), [&](char c) { return isLetter(c) || (c >= '0' && c <= '9'); });
    if (!isWellFormed) {
        return "A tag has four letters or digits and begins with a letter.";
    }
    for (auto const& axis : font.canonicalAxes()) {
        if (axis->axisTag() == tag) {
            return "The axis " + inQuotes(axis->name()) + " has the tag " + std::string(tag) + " already.";
        }
    }
    return std::nullopt;
}

std::optional<std::string> TLReasonAgainstAxisBounds(TLAxisBounds const& bounds)
{
    auto const& [minimum, defaultValue, maximum] = bounds;
    if (!isStorableCoordinate(minimum) || !isStorableCoordinate(defaultValue)
        || !isStorableCoordinate(maximum)) {
        return "The values of an axis are numbers.";
    }
    if (!(minimum < maximum)) {
        return "The minimum has to lie below the maximum.";
    }
    if (defaultValue < minimum || defaultValue > maximum) {
        return "The default has to lie between minimum and maximum.";
    }
    return std::nullopt;
}

std::shared_ptr<TLAxis> TLAddAxis(std::shared_ptr<TLFont> const& font, std::string const& name,
    std::string const& tag, TLAxisBounds const& bounds)
{
    if (TLReasonAgainstAxisName(*font, name) || TLReasonAgainstAxisTag(*font, tag)
        || TLReasonAgainstAxisBounds(bounds)) {
        return nullptr;
    }
    auto const axis = std::make_shared<TLAxis>();
    axis->setName(name);
    axis->setAxisTag(tag);
    axis->setDefaultValue(bounds.defaultValue);
    axis->setBounds(bounds.minimum, bounds.maximum);
    font->history().endStep();
    font->insertAxis(axis, font->axes().size());
    for (auto const& master : font->fontMasters()) {
        master->setAxisInternalValue(bounds.defaultValue, axis->axisId());
    }
    font->history().endStep();
    return axis;
}

void TLRenameAxis(std::shared_ptr<TLFont> const& font, TLAxis const& axis, std::string const& name)
{
    auto const& axes = font->canonicalAxes();
    auto const found = std::ranges::find(axes, &axis, [](auto const& candidate) { return candidate.get(); });
    if (found == axes.end() || name == axis.name() || TLReasonAgainstAxisName(*font, name, &axis)) {
        return;
    }
    auto const index = static_cast<std::size_t>(found - axes.begin());
    auto state = axis.state();
    state.name = name;
    font->history().endStep();
    font->removeAxis(index);
    font->insertAxis(std::make_shared<TLAxis>(std::move(state)), index);
    font->history().endStep();
}
