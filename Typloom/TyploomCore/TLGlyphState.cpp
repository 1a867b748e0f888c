#include "Typloom/TyploomCore/TLDocumentHistory.h"
#include "Typloom/TyploomCore/DocumentRevision.h"
#include "Typloom/TyploomCore/TLFont.h"

#include <algorithm>
#include <unordered_set>

bool TLGlyphState::operator==(TLGlyphState const& other) const
{
    return axes == other.axes
        && std::equal(layers.begin(), layers.end(), other.layers.begin(), other.layers.end(),
            [](auto const& one, auto const& another) { return one == another || *one == *another; });
}

TLLayerState const* TLGlyphState::layer(std::string_view layerId) const
{
    auto const found = std::find_if(layers.begin(), layers.end(),
        [layerId](auto const& candidate) { return candidate->layerId == layerId; });
    return found == layers.end() ? nullptr : found->get();
}

TLGlyphState TLGlyph::state() const
{
    TLGlyphState state;
    for (auto const& axis : m_axes) {
        state.axes.push_back(axis->state());
    }
    state.layers.reserve(m_trueLayers.size());
    for (auto const& [layerId, layer] : m_trueLayers) {
        state.layers.push_back(layer->state());
    }
    return state;
}

void TLGlyph::restore(TLGlyphState const& state)
{
    restoreAxes(state.axes);
    restoreLayers(state.layers);
    documentDidChange();
}

void TLGlyph::restoreAxes(std::vector<TLAxisState> const& states)
{
    std::vector<std::shared_ptr<TLAxis>> axes;
    for (auto const& state : states) {
        auto const same = std::find_if(
            m_axes.begin(), m_axes.end(), [&state](auto const& axis) { return axis->state() == state; });
        axes.push_back(same == m_axes.end() ? std::make_shared<TLAxis>(state) : *same);
    }
    for (auto const& axis : m_axes) {
        axis->setChangeObserver(nullptr);
    }
    m_axes = std::move(axes);
    for (auto const& axis : m_axes) {
        adopt(*axis);
    }
}

void TLGlyph::restoreLayers(std::vector<std::shared_ptr<TLLayerState const>> const& states)
{
    TLLayerDictionary working;
    TLLayerDictionary placed;
    for (auto const& state : states) {
        auto layer = m_workingLayers.find(state->layerId);
        auto truth = m_trueLayers.find(state->layerId);
        if (!layer) {
            auto const data = std::make_shared<TLLayer::Data>();
            data->glyph = sharedAs<TLGlyph>();
            data->layerId = state->layerId;
            truth = layer = std::make_shared<TLLayer>(data);
        }
        layer->restore(state);
        working.append(layer);
        placed.append(truth);
    }
    m_workingLayers = std::move(working);
    m_trueLayers = std::move(placed);
    m_spreads.clear();
}

void TLGlyph::adopt(TLAxis& axis)
{
    axis.setChangeObserver([weak = std::weak_ptr(sharedAs<TLGlyph>())] {
        if (auto const glyph = weak.lock()) {
            glyph->willChange();
        }
    });
}

void TLGlyph::willChange()
{
    if (auto const owner = font()) {
        owner->history().glyphWillChange(*this);
    }
}
