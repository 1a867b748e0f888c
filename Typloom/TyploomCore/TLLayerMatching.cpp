#include "Typloom/TyploomCore/TLLayerMatching.h"

#include <algorithm>
#include <cmath>

namespace {

/// Two values of an axis that differ by less are the same place, in design coordinates.
constexpr double tolerance = 1e-5;

template <class ValueOnAxis>
bool standsAt(
    std::vector<std::shared_ptr<TLAxis>> const& axes, TLLocation const& place, ValueOnAxis valueOnAxis)
{
    return std::all_of(axes.begin(), axes.end(), [&](auto const& axis) {
        auto const target = TLLocationNumber(place, axis->axisId()).value_or(axis->defaultValue());
        return std::abs(valueOnAxis(*axis) - target) < tolerance;
    });
}

} // namespace

std::shared_ptr<TLLayer> TLLayerAtPlace(
    TLGlyph const& glyph, TLLocation const& place, std::optional<std::string> const& preferredMasterId)
{
    auto const axes = glyph.allAxes();
    std::shared_ptr<TLLayer> first;
    for (auto const& [layerId, layer] : glyph.layers()) {
        if (!layer->isMasterLayer() && !layer->isBraceLayer()) {
            continue;
        }
        bool const isPreferred = !preferredMasterId || layer->associatedMasterId() == preferredMasterId;
        if (first && !isPreferred) {
            continue;
        }
        auto const value = [&layer = *layer](TLAxis const& axis) {
            return layer.axisInternalValueValue(axis.axisId()).value_or(axis.defaultValue());
        };
        if (!standsAt(axes, place, value)) {
            continue;
        }
        if (isPreferred) {
            return layer;
        }
        first = layer;
    }
    return first;
}

std::shared_ptr<TLFontMaster> TLMasterAtPlace(TLFont const& font, TLLocation const& place)
{
    auto const& masters = font.fontMasters();
    auto const found = std::find_if(masters.begin(), masters.end(), [&](auto const& master) {
        return standsAt(font.canonicalAxes(), place,
            [&](TLAxis const& axis) { return master->axisInternalValueValueForId(axis.axisId()); });
    });
    return found == masters.end() ? nullptr : *found;
}

TLLocation TLCompletedPlace(std::vector<std::shared_ptr<TLAxis>> const& axes, TLLocation const& place)
{
    TLLocation completed;
    for (auto const& axis : axes) {
        completed[axis->axisId()] = TLLocationNumber(place, axis->axisId()).value_or(axis->defaultValue());
    }
    return completed;
}
