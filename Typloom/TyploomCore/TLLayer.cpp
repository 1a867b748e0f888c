#include "Typloom/TyploomCore/TLLayer.h"

#include "Typloom/TyploomCore/TLFont.h"
#include "Typloom/TyploomCore/TLInterpolationFontProxy.h"
#include "Typloom/TyploomCore/DocumentRevision.h"
#include "Typloom/TyploomCore/TLPlaceReader.h"
#include "Typloom/TyploomCore/Storable.h"

#include <utility>

TLLayer::TLLayer(std::shared_ptr<Data> data)
    : m_data(std::move(data))
{
    readCoordinates();
}

TLLayer::TLLayer(std::shared_ptr<Data> data, std::shared_ptr<TLInterpolationFontProxy> proxy)
    : m_data(std::move(data))
    , m_proxy(std::move(proxy))
{
    readCoordinates();
}

void TLLayer::readCoordinates()
{
    auto const before = std::exchange(m_data->values, {});
    for (auto const& [axisId, value] : m_data->coordinates) {
        m_data->values.set(TLAxisKeyForId(axisId), value);
    }
    if (auto const owner = glyph()) {
        owner->coordinatesDidChange(before, m_data->values);
    }
}

std::shared_ptr<TLFont> TLLayer::font() const
{
    if (auto const owner = glyph()) {
        return owner->font();
    }
    return m_proxy ? m_proxy->parentFont() : nullptr;
}

std::shared_ptr<NSObject> TLLayer::valueForKey(std::string_view key) const
{
    if (key != "font") {
        return nullptr;
    }
    if (m_proxy) {
        return m_proxy;
    }
    return font();
}

std::optional<double> TLLayer::axisInternalValueValue(std::string_view axisId) const
{
    auto const owner = font();
    return TLLayerPlace(*this, owner.get()).valueForId(axisId);
}

void TLLayer::setCoordinates(TLCoordinates coordinates)
{
    std::erase_if(coordinates, [](auto const& entry) { return !isStorableCoordinate(entry.second); });
    for (auto& [axisId, value] : coordinates) {
        value += 0.0; // -0 becomes 0.
    }
    if (coordinates == m_data->coordinates) {
        return;
    }
    willChange();
    m_data->coordinates = std::move(coordinates);
    readCoordinates();
    documentDidChange();
}

void TLLayer::setName(std::string name)
{
    if (name == m_data->name) {
        return;
    }
    willChange();
    m_data->name = std::move(name);
    documentDidChange();
}

void TLLayer::setOutline(TLOutline outline)
{
    if (outline == m_data->outline) {
        return;
    }
    willChange();
    m_data->outline = std::move(outline);
    documentDidChange();
}

std::shared_ptr<TLLayerState const> TLLayer::state() const
{
    if (!m_data->captured) {
        m_data->captured = std::make_shared<TLLayerState const>(static_cast<TLLayerState const&>(*m_data));
    }
    return m_data->captured;
}

void TLLayer::restore(std::shared_ptr<TLLayerState const> const& state)
{
    if (m_data->captured == state) {
        return;
    }
    static_cast<TLLayerState&>(*m_data) = *state;
    readCoordinates();
    m_data->captured = state;
    documentDidChange();
}

void TLLayer::willChange()
{
    if (auto const owner = glyph()) {
        owner->willChange();
    }
    m_data->captured = nullptr;
}
