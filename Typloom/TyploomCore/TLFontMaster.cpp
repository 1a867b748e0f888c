#include "Typloom/TyploomCore/TLFontMaster.h"

#include "Typloom/TyploomCore/DocumentRevision.h"
#include "Typloom/TyploomCore/Storable.h"

TLFontMaster::TLFontMaster(std::string id, std::string name)
    : m_id(std::move(id))
    , m_name(std::move(name))
{
}

TLMasterState TLFontMaster::state() const
{
    TLStringMap<double> values;
    for (std::size_t index = 0; index < m_values.keys().size(); ++index) {
        values.emplace(TLAxisIdForKey(m_values.keys()[index]), m_values.values()[index]);
    }
    return { m_id, m_name, std::move(values), m_metrics };
}

void TLFontMaster::restore(TLMasterState const& state)
{
    m_name = state.name;
    m_values = {};
    for (auto const& [axisId, value] : state.values) {
        m_values.set(TLAxisKeyForId(axisId), value);
    }
    m_metrics = state.metrics;
    documentDidChange();
}

void TLFontMaster::willChange(std::optional<TLAxisKey> movedOnAxis) const
{
    if (m_observer) {
        m_observer(movedOnAxis);
    }
}

void TLFontMaster::setName(std::string name)
{
    name = storableName(std::move(name));
    if (name == m_name) {
        return;
    }
    willChange();
    m_name = std::move(name);
    documentDidChange();
}

double TLFontMaster::axisInternalValueValueForId(std::string_view axisId) const
{
    auto const key = TLKnownAxisKey(axisId);
    return key ? valueForKey(*key, 0) : 0;
}

void TLFontMaster::setAxisInternalValue(double value, std::string_view axisId)
{
    if (!isStorableCoordinate(value)) {
        return;
    }
    auto const key = TLAxisKeyForId(axisId);
    auto const* before = m_values.find(key);
    if (before && *before == value) {
        return;
    }
    willChange(key);
    m_values.set(key, value + 0.0); // -0 becomes 0.
    documentDidChange();
}
