#include "Typloom/TyploomCore/TLLayerMatching.h"

#include "Typloom/TyploomCore/TLPlaceReader.h"

#include <algorithm>
#include <cmath>

namespace {

/// Two values of an axis that differ by less are the same place, in design coordinates.
constexpr double tolerance = 1e-5;

} // namespace

std::shared_ptr<TLLayer> TLLayerAtPlace(
    TLGlyph const& glyph, TLLocation const& place, std::optional<std::string> const& preferredMasterId)
{
    auto const font = glyph.font();
    TLPlaceSearch const search(glyph.allAxes(), font.get(), place, tolerance);
    std::shared_ptr<TLLayer> first;
    for (auto const& [layerId, layer] : glyph.layers()) {
        if (!layer->isMasterLayer() && !layer->isBraceLayer()) {
            continue;
        }
        bool const isPreferred = !preferredMasterId || layer->associatedMasterId() == preferredMasterId;
        if ((first && !isPreferred) || !search.finds(*layer)) {
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
    TLPlaceSearch const search(font.canonicalAxes(), &font, place, tolerance);
    auto const found = std::find_if(
        masters.begin(), masters.end(), [&search](auto const& master) { return search.finds(*master); });
    return found == masters.end() ? nullptr : *found;
}

std::shared_ptr<TLFontMaster> TLMasterNearestTo(TLFont const& font, TLLocation const& place)
{
    auto const distance = [&](std::shared_ptr<TLFontMaster> const& master) {
        double sum = 0;
        for (auto const& axis : font.canonicalAxes()) {
            auto const target = TLLocationNumber(place, axis->axisId()).value_or(axis->defaultValue());
            auto const length = axis->maximum() - axis->minimum();
            auto const step = master->axisInternalValueValueForId(axis->axisId()) - target;
            sum += length > 0 ? std::pow(step / length, 2) : 0;
        }
        return sum;
    };
    auto const nearest = std::ranges::min_element(font.fontMasters(), {}, distance);
    return nearest == font.fontMasters().end() ? nullptr : *nearest;
}

TLLocation TLCompletedPlace(std::vector<std::shared_ptr<TLAxis>> const& axes, TLLocation const& place)
{
    TLLocation completed;
    for (auto const& axis : axes) {
        completed[axis->axisId()] = TLLocationNumber(place, axis->axisId()).value_or(axis->defaultValue());
    }
    return completed;
}
