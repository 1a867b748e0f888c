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
    return { m_id, m_name, m_values, m_metrics };
}

void TLFontMaster::restore(TLMasterState const& state)
{
    m_name = state.name;
    m_values = state.values;
    m_metrics = state.metrics;
    documentDidChange();
}

void TLFontMaster::willChange() const
{
    if (m_observer) {
        m_observer();
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
    auto const entry = m_values.find(axisId);
    return entry == m_values.end() ? 0 : entry->second;
}

void TLFontMaster::setAxisInternalValue(double value, std::string_view axisId)
{
    if (!isStorableCoordinate(value)) {
        return;
    }
    auto const entry = m_values.find(axisId);
    if (entry != m_values.end() && entry->second == value) {
        return;
    }
    willChange();
    m_values.insert_or_assign(std::string(axisId), value + 0.0); // -0 becomes 0.
    documentDidChange();
}
