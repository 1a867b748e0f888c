#include "Typloom/Formats/LayerMatch.h"

#include <algorithm>
#include <set>

namespace {

/// Where a layer stands on every axis; a master's place is its own matter.
TLCoordinates placeOf(TLLayerState const& layer, TLGlyphState const& glyph, TLFontState const& font)
{
    TLCoordinates place;
    if (layer.kind != TLLayerKind::brace) {
        return place;
    }
    auto const add = [&](TLAxisState const& axis, bool isPart) {
        auto const given = layer.coordinates.find(axis.axisId);
        auto const whole = given == layer.coordinates.end() ? axis.defaultValue : given->second;
        for (auto const& partId : axis.partIds) {
            auto const part = layer.coordinates.find(partId);
            place.emplace(partId, part == layer.coordinates.end() ? whole : part->second);
        }
        if (!isPart) {
            place.emplace(axis.axisId, whole);
        }
    };
    for (auto const& axis : glyph.axes) {
        add(axis, !axis.partIds.empty());
    }
    for (auto const& axis : font.axes) {
        add(axis, false);
    }
    return place;
}

bool comeFromOneFile(LayerOrigin const& one, LayerOrigin const& other)
{
    return one.ufo == other.ufo && one.ufoLayer == other.ufoLayer
        && one.isOfLocalSource == other.isOfLocalSource;
}

} // namespace

LayerOrigin const* findOrigin(std::vector<LayerOrigin> const& origins, std::string const& layerId)
{
    auto const found = std::find_if(
        origins.begin(), origins.end(), [&layerId](auto const& origin) { return origin.layerId == layerId; });
    return found == origins.end() ? nullptr : &*found;
}

std::map<std::string, std::string> matchLayers(TLGlyphState const& one,
    std::vector<LayerOrigin> const& originsOfOne, TLGlyphState const& other,
    std::vector<LayerOrigin> const& originsOfOther, TLFontState const& font)
{
    std::map<std::string, std::string> matches;
    std::set<std::string> taken;
    for (auto const& layer : one.layers) {
        auto const* origin = findOrigin(originsOfOne, layer->layerId);
        auto const match = std::find_if(other.layers.begin(), other.layers.end(), [&](auto const& candidate) {
            auto const* itsOrigin = findOrigin(originsOfOther, candidate->layerId);
            bool const isOther = !origin || !itsOrigin || !comeFromOneFile(*origin, *itsOrigin)
                || candidate->kind != layer->kind || taken.contains(candidate->layerId);
            return !isOther && (layer->kind != TLLayerKind::master || layer->layerId == candidate->layerId)
                && placeOf(*layer, one, font) == placeOf(*candidate, other, font);
        });
        if (match != other.layers.end()) {
            taken.insert((*match)->layerId);
            matches.emplace(layer->layerId, (*match)->layerId);
        }
    }
    return matches;
}
