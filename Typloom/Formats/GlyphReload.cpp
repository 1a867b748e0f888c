#include "Typloom/Formats/GlyphReload.h"

#include "Typloom/Formats/LayerMatch.h"
#include "Typloom/Formats/UniqueNames.h"

#include <algorithm>

bool hasNewProblem(TLGlyphState const& before, TLGlyphState const& after)
{
    auto const problems = [](TLGlyphState const& state) {
        return std::count_if(state.layers.begin(), state.layers.end(),
            [](auto const& layer) { return layer->problem.has_value(); });
    };
    return problems(after) > problems(before);
}

std::optional<TLDocumentHistory::Redrawn> redrawnLayers(
    GlyphReading const& before, GlyphReading const& now, TLFontState const& font)
{
    TLDocumentHistory::Redrawn redrawn;
    auto const matches = matchLayers(now.state, now.origins, before.state, before.origins, font);
    if (now.state.axes != before.state.axes || matches.size() != now.state.layers.size()
        || matches.size() != before.state.layers.size()) {
        return std::nullopt;
    }
    for (auto const& layer : now.state.layers) {
        auto const* was = before.state.layer(matches.at(layer->layerId));
        auto const* origin = findOrigin(now.origins, layer->layerId);
        if (origin->isOfLocalSource && was->name != layer->name) {
            return std::nullopt;
        }
        if (was->outline != layer->outline) {
            redrawn.emplace(was->layerId, std::pair(was->outline, layer->outline));
        }
    }
    return redrawn;
}

std::set<std::string> takeOutlines(TLGlyphState& glyph, TLDocumentHistory::Redrawn& redrawn)
{
    std::set<std::string> left;
    for (auto const& [layerId, outlines] : redrawn) {
        auto const* layer = glyph.layer(layerId);
        if (!layer || (layer->outline != outlines.first && layer->outline != outlines.second)) {
            left.insert(layerId);
        }
    }
    std::erase_if(redrawn, [&left](auto const& entry) { return left.contains(entry.first); });
    for (auto& layer : glyph.layers) {
        auto const entry = redrawn.find(layer->layerId);
        if (entry != redrawn.end()) {
            auto state = *layer;
            state.outline = entry->second.second;
            layer = std::make_shared<TLLayerState const>(std::move(state));
        }
    }
    return left;
}

std::vector<std::filesystem::path> filesOf(Family const& family, std::string const& glyphName,
    std::vector<LayerOrigin> const& origins, std::set<std::string> const& left)
{
    std::map<std::filesystem::path, bool> isLeft;
    for (auto const& origin : origins) {
        if (auto const path = family.glifPath(origin.ufo, origin.ufoLayer, glyphName)) {
            isLeft[*path] = isLeft[*path] || left.contains(origin.layerId);
        }
    }
    std::vector<std::filesystem::path> files;
    for (auto const& [path, stays] : isLeft) {
        if (!stays) {
            files.push_back(path);
        }
    }
    return files;
}

void keepIdentifiers(TLGlyphState& glyph, std::vector<LayerOrigin>& origins, GlyphReading const& before,
    TLFontState const& font)
{
    auto const matches = matchLayers(glyph, origins, before.state, before.origins, font);
    UniqueNames identifiers;
    for (auto const& [readId, layerId] : matches) {
        identifiers.take(layerId);
    }
    for (auto& layer : glyph.layers) {
        auto const match = matches.find(layer->layerId);
        auto const layerId = match == matches.end() ? identifiers.take(layer->layerId) : match->second;
        auto const origin = std::find_if(origins.begin(), origins.end(),
            [&layer](auto const& candidate) { return candidate.layerId == layer->layerId; });
        origin->layerId = layerId;
        auto state = *layer;
        state.layerId = layerId;
        layer = std::make_shared<TLLayerState const>(std::move(state));
    }
}
