#include "Typloom/TyploomCore/TLGlyph.h"

#include <algorithm>

std::shared_ptr<TLLayer> TLLayerDictionary::find(std::string_view layerId) const
{
    auto const entry = m_indexes.find(layerId);
    return entry == m_indexes.end() ? nullptr : m_entries[entry->second].second;
}

void TLLayerDictionary::append(std::shared_ptr<TLLayer> layer)
{
    insert(std::move(layer), m_entries.size());
}

void TLLayerDictionary::insert(std::shared_ptr<TLLayer> layer, std::size_t index)
{
    remove(layer->layerId());
    index = std::min(index, m_entries.size());
    std::string identifier = layer->layerId();
    m_entries.emplace(
        m_entries.begin() + static_cast<std::ptrdiff_t>(index), std::move(identifier), std::move(layer));
    reindexFrom(index);
}

void TLLayerDictionary::remove(std::string_view layerId)
{
    auto const entry = m_indexes.find(layerId);
    if (entry == m_indexes.end()) {
        return;
    }
    auto const index = entry->second;
    m_indexes.erase(entry);
    m_entries.erase(m_entries.begin() + static_cast<std::ptrdiff_t>(index));
    reindexFrom(index);
}

void TLLayerDictionary::replace(std::shared_ptr<TLLayer> const& layer)
{
    auto const entry = m_indexes.find(layer->layerId());
    if (entry != m_indexes.end()) {
        m_entries[entry->second].second = layer;
    }
}

void TLLayerDictionary::reindexFrom(std::size_t index)
{
    for (; index < m_entries.size(); ++index) {
        m_indexes[m_entries[index].first] = index;
    }
}
