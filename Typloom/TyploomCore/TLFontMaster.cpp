#include "Typloom/TyploomCore/TLFontMaster.h"

#include "Typloom/TyploomCore/DocumentRevision.h"

#include <cmath>

void TLFontMaster::setName(std::string name)
{
    if (name == m_name) {
        return;
    }
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
    if (!std::isfinite(value)) {
        return;
    }
    auto const [entry, isNew] = m_values.try_emplace(std::string(axisId), value + 0.0);
    if (!isNew && entry->second == value) {
        return;
    }
    entry->second = value + 0.0; // -0 becomes 0.
    documentDidChange();
}
