#include "Moravel/Model/Matching.h"

#include "Typloom/TyploomCore/TLPlaceReader.h"

#include <algorithm>

static TLPlaceSearch searchForMaster(TLFont const& font, TLLocation const& location)
{
    return { font.canonicalAxes(), &font, location, matchingTolerance };
}

static TLPlaceSearch searchForLayer(TLGlyph const& glyph, TLFont const* font, TLLocation const& location)
{
    return { glyph.allAxes(), font, location, matchingTolerance };
}

bool masterMatchesLocation(TLFontMaster const& master, TLFont const& font, TLLocation const& location)
{
    return searchForMaster(font, location).finds(master);
}

std::shared_ptr<TLFontMaster> matchingMaster(TLFont const& font, TLLocation const& location)
{
    auto const search = searchForMaster(font, location);
    auto const& masters = font.fontMasters();
    auto const found
        = std::ranges::find_if(masters, [&](auto const& master) { return search.finds(*master); });
    return found == masters.end() ? nullptr : *found;
}

bool layerMatchesLocation(TLLayer const& layer, TLGlyph const& glyph, TLLocation const& location)
{
    auto const font = glyph.font();
    return searchForLayer(glyph, font.get(), location).finds(layer);
}

std::shared_ptr<TLLayer> matchingLayer(
    TLGlyph const& glyph, TLLocation const& location, std::optional<std::string> const& associatedMasterId)
{
    auto const font = glyph.font();
    auto const search = searchForLayer(glyph, font.get(), location);
    std::shared_ptr<TLLayer> ofAnyMaster;
    for (auto const& [layerId, layer] : glyph.layers()) {
        auto const isCandidate = layer->isMasterLayer() || layer->isBraceLayer();
        auto const isPreferred = associatedMasterId && layer->associatedMasterId() == associatedMasterId;
        if (!isCandidate || (ofAnyMaster && !isPreferred) || !search.finds(*layer)) {
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
