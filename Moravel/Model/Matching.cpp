#include "Moravel/Model/Matching.h"

#include <algorithm>
#include <cmath>

/// One axis of a place that is looked for.
struct AxisTarget {
    std::string_view axisId;
    double value;
    double axisDefault;
};

using Targets = std::vector<AxisTarget>;

static Targets targets(std::vector<std::shared_ptr<TLAxis>> const& axes, TLLocation const& location)
{
    Targets result;
    result.reserve(axes.size());
    for (auto const& axis : axes) {
        auto const wanted = TLLocationNumber(location, axis->axisId()).value_or(axis->defaultValue());
        result.push_back({ axis->axisId(), wanted, axis->defaultValue() });
    }
    return result;
}

static bool isSamePlace(double left, double right)
{
    return std::abs(left - right) < matchingTolerance;
}

/// The targets are looked up once for all the masters of a search.
static bool masterMatchesLocation(TLFontMaster const& master, Targets const& place)
{
    return std::ranges::all_of(place, [&](AxisTarget const& target) {
        return isSamePlace(master.axisInternalValueValueForId(target.axisId), target.value);
    });
}

static bool layerMatchesLocation(TLLayer const& layer, Targets const& place)
{
    return std::ranges::all_of(place, [&](AxisTarget const& target) {
        auto const value = layer.axisInternalValueValue(target.axisId).value_or(target.axisDefault);
        return isSamePlace(value, target.value);
    });
}

bool masterMatchesLocation(TLFontMaster const& master, TLFont const& font, TLLocation const& location)
{
    return masterMatchesLocation(master, targets(font.canonicalAxes(), location));
}

std::shared_ptr<TLFontMaster> matchingMaster(TLFont const& font, TLLocation const& location)
{
    auto const place = targets(font.canonicalAxes(), location);
    auto const& masters = font.fontMasters();
    auto const found = std::ranges::find_if(
        masters, [&](auto const& master) { return masterMatchesLocation(*master, place); });
    return found == masters.end() ? nullptr : *found;
}

bool layerMatchesLocation(TLLayer const& layer, TLGlyph const& glyph, TLLocation const& location)
{
    return layerMatchesLocation(layer, targets(glyph.allAxes(), location));
}

std::shared_ptr<TLLayer> matchingLayer(
    TLGlyph const& glyph, TLLocation const& location, std::optional<std::string> const& associatedMasterId)
{
    auto const axes = glyph.allAxes();
    auto const place = targets(axes, location);
    std::shared_ptr<TLLayer> ofAnyMaster;
    for (auto const& [layerId, layer] : glyph.layers()) {
        auto const isCandidate = layer->isMasterLayer() || layer->isBraceLayer();
        auto const isPreferred = associatedMasterId && layer->associatedMasterId() == associatedMasterId;
        if (!isCandidate || (ofAnyMaster && !isPreferred) || !layerMatchesLocation(*layer, place)) {
            continue;
        }
        if (isPreferred) {
            return layer;
        }
        if (!ofAnyMaster) {
            ofAnyMaster = layer;
        }
    }
    return ofAnyMaster;
}
