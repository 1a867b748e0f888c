#include "Typloom/TyploomCore/TLPlaceReader.h"

#include <algorithm>
#include <cmath>

TLLayerPlace::TLLayerPlace(TLLayer const& layer, TLFont const* font, std::size_t* nextMaster)
    : m_values(layer.data()->values)
    , m_font(font)
    , m_isMaster(layer.isMasterLayer())
    , m_standsSomewhere(layer.data()->kind != TLLayerKind::other)
{
    if (m_isMaster && font) {
        auto const& associated = layer.associatedMasterId();
        auto const& masterId = associated ? *associated : layer.layerId();
        auto const next = nextMaster ? (*nextMaster)++ : NSNotFound;
        auto const& masters = font->fontMasters();
        bool const isNext = next < masters.size() && masters[next]->id() == masterId;
        m_master = isNext ? masters[next].get() : font->fontMasterForId(masterId).get();
    }
    if (m_standsSomewhere && layer.previewLocation()) {
        m_preview = &*layer.previewLocation();
    }
}

std::optional<double> TLLayerPlace::valueForId(std::string_view axisId) const
{
    if (auto const previewed = m_preview ? TLLocationNumber(*m_preview, axisId) : std::nullopt) {
        return previewed;
    }
    auto const key = m_standsSomewhere ? TLKnownAxisKey(axisId) : std::nullopt;
    return key ? ownValue({ *key, m_font }) : std::nullopt;
}

std::optional<double> TLLayerPlace::valueInPreview(TLAxisColumn const& column) const
{
    auto const previewed = TLLocationNumber(*m_preview, TLAxisIdForKey(column.key));
    return previewed ? previewed : ownValue(column);
}

TLPlaceSearch::TLPlaceSearch(std::vector<std::shared_ptr<TLAxis>> const& axes, TLFont const* font,
    TLLocation const& location, double tolerance)
    : m_font(font)
    , m_tolerance(tolerance)
{
    m_targets.reserve(axes.size());
    for (auto const& axis : axes) {
        auto const value = TLLocationNumber(location, axis->axisId()).value_or(axis->defaultValue());
        m_targets.push_back({ { axis->key(), font }, value, axis->defaultValue() });
    }
    // Most sources stand at the default of most axes: where the place does not, they differ soonest.
    std::partition(m_targets.begin(), m_targets.end(),
        [](Target const& target) { return target.value != target.axisDefault; });
}

bool TLPlaceSearch::finds(TLFontMaster const& master) const
{
    return std::all_of(m_targets.begin(), m_targets.end(), [&](Target const& target) {
        auto const value = master.valueForKey(target.column.key, target.column.index);
        return std::abs(value - target.value) < m_tolerance;
    });
}

bool TLPlaceSearch::finds(TLLayer const& layer) const
{
    TLLayerPlace const place(layer, m_font, &m_nextMaster);
    return std::all_of(m_targets.begin(), m_targets.end(), [&](Target const& target) {
        auto const value = place.value(target.column).value_or(target.axisDefault);
        return std::abs(value - target.value) < m_tolerance;
    });
}
