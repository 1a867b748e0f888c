#include "Typloom/TyploomApp/TLStateText.h"

#include "Platform/Foundation/NSNumberFormatter.h"
#include "Typloom/TyploomCore/TLLayerMatching.h"

#include <algorithm>

namespace {

/// More axes than a line can show: then only those away from their default are named.
constexpr std::size_t mostAxes = 6;

std::string numberText(double value)
{
    NSNumberFormatter formatter;
    formatter.setMaximumFractionDigits(3);
    return formatter.stringFromNumber(value).value_or(std::string());
}

std::string problemText(TLDrawingProblem const& problem)
{
    auto const source = problem.nearestSource.empty() ? "" : ": " + TLShownName(problem.nearestSource);
    return "Nearest source" + source + " (" + TLShownName(problem.reason) + ")";
}

} // namespace

std::string TLCoordinatesText(TLEditState const& state)
{
    auto const place = state.place();
    auto const value = [&place](TLAxis const& axis) -> std::optional<double> {
        return TLLocationNumber(place, axis.axisId()).value_or(axis.defaultValue());
    };
    auto axes = state.font()->canonicalAxes();
    if (auto const& glyph = state.editedGlyph()) {
        axes.insert(axes.end(), glyph->axes().begin(), glyph->axes().end());
    }
    return TLPlaceText(std::move(axes), value);
}

/// Whether an axis, one of the glyph's own since those have no tag, is called like another.
static bool isNamesakeOfGlyph(TLAxis const& axis, std::vector<std::shared_ptr<TLAxis>> const& axes)
{
    return !axis.axisTag() && std::any_of(axes.begin(), axes.end(), [&axis](auto const& other) {
        return other.get() != &axis && other->axisTag() && other->name() == axis.name();
    });
}

std::string TLPlaceText(std::vector<std::shared_ptr<TLAxis>> axes,
    std::function<std::optional<double>(TLAxis const&)> const& value)
{
    auto const all = axes;
    std::erase_if(axes, [&value](auto const& axis) { return !value(*axis); });
    if (axes.size() > mostAxes) {
        std::erase_if(axes, [&value](auto const& axis) { return value(*axis) == axis->defaultValue(); });
    }
    std::string text;
    for (std::size_t index = 0; index < std::min(axes.size(), mostAxes); ++index) {
        auto const& axis = *axes[index];
        text += (index == 0 ? "" : ", ") + TLShownName(axis.name())
            + (isNamesakeOfGlyph(axis, all) ? " (glyph) " : " ") + numberText(value(axis).value_or(0));
    }
    return axes.size() > mostAxes ? text + ", …" : text;
}

std::string TLShownName(std::string const& name)
{
    constexpr std::size_t longest = 500;
    if (name.size() <= longest) {
        return name;
    }
    auto end = longest;
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U) {
        --end; // Not within a character.
    }
    return name.substr(0, end) + "…";
}

std::string TLLayerTitle(TLFont const& font, TLLayer const& layer)
{
    if (layer.isMasterLayer()) {
        auto const master = font.fontMasterForId(layer.layerId());
        return TLShownName(master ? master->name() : layer.name());
    }
    return TLShownName(layer.name().empty() ? layer.layerId() : layer.name());
}

std::string TLStateText(TLEditState const& state, std::optional<TLDrawingProblem> const& problem)
{
    if (state.showsInterpolation() || state.axisLocation()) {
        return problem ? problemText(*problem) : "Interpolated";
    }
    if (auto const& layer = state.activeLayer()) {
        return TLLayerTitle(*state.font(), *layer);
    }
    auto const master = state.currentMaster();
    return master ? TLShownName(master->name()) : "No master";
}

std::optional<std::string> TLStateAdvice(TLEditState const& state)
{
    auto const shown = state.showsInterpolation() ? nullptr : state.activeLayer();
    auto const glyph = state.editedGlyph();
    if (!shown || !glyph || !shown->isBraceLayer()) {
        return std::nullopt;
    }
    auto const there = TLLayerAtPlace(*glyph, state.place(), std::nullopt);
    if (!there || there->layerId() == shown->layerId()) {
        return std::nullopt;
    }
    return "Stands where “" + TLLayerTitle(*state.font(), *there)
        + "” does: type another coordinate in the Layers palette";
}
