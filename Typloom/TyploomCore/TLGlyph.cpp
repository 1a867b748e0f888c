#include "Typloom/TyploomCore/TLGlyph.h"

#include "Typloom/TyploomCore/TLDocumentHistory.h"
#include "Typloom/TyploomCore/TLFont.h"
#include "Typloom/TyploomCore/DocumentRevision.h"

#include <algorithm>
#include <utility>

TLGlyph::TLGlyph(std::string name)
    : m_name(std::move(name))
{
}

std::shared_ptr<TLLayer> TLGlyph::layerForId(std::string_view layerId) const
{
    return m_workingLayers.find(layerId);
}

TLLayerDictionary const& TLGlyph::layers() const
{
    return m_trueLayers;
}

void TLGlyph::setPreviewLocation(std::string_view layerId, std::optional<TLLocation> location)
{
    auto const working = m_workingLayers.find(layerId);
    if (!working) {
        return;
    }
    if (!location) {
        m_trueLayers.replace(working);
    } else if (m_trueLayers.find(layerId) == working) {
        m_trueLayers.replace(std::make_shared<TLLayer>(working->data()));
    }
    working->setPreviewLocation(std::move(location));
}

std::size_t TLGlyph::indexForInserting(TLLayer const& layer) const
{
    auto const owner = font();
    auto const rank = [&owner](TLLayer const& candidate) {
        auto const kind = candidate.data()->kind;
        std::size_t const masterIndex = kind == TLLayerKind::master && owner
            ? owner->indexOfObjectInAllMasters(owner->fontMasterForId(candidate.layerId()))
            : 0;
        return std::pair(kind, masterIndex);
    };
    // From the end, since files give layers in their order: then this looks at one layer only.
    std::vector<TLLayerDictionary::Entry> const& entries = m_trueLayers.entries();
    auto const rankOfLayer = rank(layer);
    auto const before = std::find_if(entries.rbegin(), entries.rend(),
        [&](auto const& entry) { return rank(*entry.second) <= rankOfLayer; });
    return static_cast<std::size_t>(entries.rend() - before);
}

void TLGlyph::insertLayer(std::shared_ptr<TLLayer> const& layer)
{
    if (!layer) {
        return;
    }
    willChange();
    removeLayer(layer->layerId());
    layer->data()->glyph = sharedAs<TLGlyph>();
    auto const index = indexForInserting(*layer);
    m_workingLayers.insert(layer, index);
    m_trueLayers.insert(layer, index);
    m_spreads.clear();
    documentDidChange();
}

void TLGlyph::removeLayer(std::string_view layerId)
{
    if (!m_workingLayers.find(layerId)) {
        return;
    }
    willChange();
    std::string const identifier(layerId); // The argument may belong to the layer that goes.
    m_workingLayers.remove(identifier);
    m_trueLayers.remove(identifier);
    m_spreads.clear();
    documentDidChange();
}

void TLGlyph::insertObjectInAxesAtIndex(std::shared_ptr<TLAxis> const& axis, std::size_t index)
{
    if (!axis) {
        return;
    }
    willChange();
    adopt(*axis);
    m_axes.insert(m_axes.begin() + static_cast<std::ptrdiff_t>(std::min(index, m_axes.size())), axis);
    documentDidChange();
}

void TLGlyph::removeObjectFromAxesAtIndex(std::size_t index)
{
    if (index >= m_axes.size()) {
        return;
    }
    willChange();
    auto const removed = m_axes[index];
    removed->setChangeObserver(nullptr);
    m_axes.erase(m_axes.begin() + static_cast<std::ptrdiff_t>(index));
    removeCoordinates(removed->partIds());
    documentDidChange();
}

/// The dimensions of an axis go with it: nobody else knows their identifiers.
void TLGlyph::removeCoordinates(std::vector<std::string> const& axisIds)
{
    if (axisIds.empty()) {
        return;
    }
    for (auto const& [layerId, layer] : m_trueLayers) {
        auto coordinates = layer->coordinates();
        std::erase_if(coordinates, [&axisIds](auto const& entry) {
            return std::find(axisIds.begin(), axisIds.end(), entry.first) != axisIds.end();
        });
        layer->setCoordinates(std::move(coordinates));
    }
}

std::vector<std::shared_ptr<TLAxis>> TLGlyph::allAxes() const
{
    auto all = m_axes;
    if (auto const owner = font()) {
        all.insert(all.end(), owner->canonicalAxes().begin(), owner->canonicalAxes().end());
    }
    return all;
}

std::unordered_map<std::shared_ptr<TLAxis>, TLClosedRange> TLGlyph::internalAxisRanges(
    std::optional<std::string> const& associatedMasterID) const
{
    std::unordered_map<std::shared_ptr<TLAxis>, TLClosedRange> ranges;
    ranges.reserve(m_axes.size());
    for (auto const& axis : m_axes) {
        auto const rest = axis->defaultValue();
        TLClosedRange range { rest, rest };
        auto const include = [&range](double value) {
            range = { std::min(range.lower, value), std::max(range.upper, value) };
        };
        if (associatedMasterID) {
            for (auto const& [layerId, layer] : m_trueLayers) {
                auto const* value = layer->data()->values.find(axis->key());
                if (value && layer->associatedMasterId() == associatedMasterID) {
                    include(*value);
                }
            }
        } else {
            auto const& spread = spreadOnAxis(*axis);
            include(spread.lowest.value_or(rest));
            include(spread.highest.value_or(rest));
        }
        ranges.emplace(axis, range);
    }
    return ranges;
}

void TLGlyph::coordinatesDidChange(TLAxisValues const& before, TLAxisValues const& after)
{
    TLForEachDifference(before, after, [this](TLAxisKey key) { m_spreads.erase(key); });
}
