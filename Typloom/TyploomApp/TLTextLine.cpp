#include "Typloom/TyploomApp/TLTextLine.h"

#include <algorithm>

std::optional<std::size_t> TLTextLine::editedIndex() const
{
    return m_selection.location < m_objects.size() ? std::optional(m_selection.location) : std::nullopt;
}

TLGlyphObject const* TLTextLine::editedObject() const
{
    auto const index = editedIndex();
    return index ? &m_objects[*index] : nullptr;
}

void TLTextLine::setObjects(std::vector<TLGlyphObject> objects, std::size_t cursor)
{
    m_objects = std::move(objects);
    select({ .location = cursor, .length = 0 });
}

void TLTextLine::replaceObject(std::size_t index, TLGlyphObject object)
{
    if (index < m_objects.size()) {
        m_objects[index] = std::move(object);
    }
}

void TLTextLine::insertObject(std::size_t index, TLGlyphObject object)
{
    auto const place = std::min(index, m_objects.size());
    m_objects.insert(m_objects.begin() + static_cast<std::ptrdiff_t>(place), std::move(object));
}

void TLTextLine::select(NSRange range)
{
    m_selection.location = std::min(range.location, m_objects.size());
    m_selection.length = std::min(range.length, m_objects.size() - m_selection.location);
}

NSRange TLTextLine::rangeReaching(std::size_t index) const
{
    auto const first = std::min(m_selection.location, index);
    auto const end = std::max(m_selection.location + std::max<std::size_t>(m_selection.length, 1), index + 1);
    return { .location = first,
        .length = std::min(end, m_objects.size()) - std::min(first, m_objects.size()) };
}

void TLTextLine::setLayer(std::size_t index, std::string layerId)
{
    if (index < m_objects.size()) {
        m_objects[index].layerId = std::move(layerId);
    }
}

void TLTextLine::setLayerOfAll(std::string const& layerId)
{
    for (auto& object : m_objects) {
        object.layerId = layerId;
    }
}
