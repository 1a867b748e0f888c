#include "Typloom/TyploomCore/TLAxis.h"

#include "Typloom/TyploomCore/DocumentRevision.h"
#include "Typloom/TyploomCore/Storable.h"
#include "Typloom/TyploomCore/TLFreshIdentifier.h"

TLAxis::TLAxis()
    : TLAxis(TLAxisState { .axisId = TLFreshIdentifier() })
{
}

TLAxis::TLAxis(std::string axisId, std::string name)
    : TLAxis(TLAxisState { .axisId = std::move(axisId), .name = std::move(name) })
{
}

TLAxis::TLAxis(TLAxisState state)
    : m_state(std::move(state))
    , m_key(TLAxisKeyForId(m_state.axisId))
{
}

void TLAxis::willChange() const
{
    if (m_observer) {
        m_observer();
    }
}

void TLAxis::setName(std::string name)
{
    name = storableName(std::move(name));
    if (name == m_state.name) {
        return;
    }
    willChange();
    m_state.name = std::move(name);
    documentDidChange();
}

void TLAxis::setDefaultValue(double value)
{
    if (!isStorableCoordinate(value) || value == m_state.defaultValue) {
        return;
    }
    willChange();
    m_state.defaultValue = value + 0.0; // -0 becomes 0.
    documentDidChange();
}

void TLAxis::setBounds(double minimum, double maximum)
{
    if (!isStorableCoordinate(minimum) || !isStorableCoordinate(maximum)) {
        return;
    }
    willChange();
    m_state.minimum = minimum + 0.0;
    m_state.maximum = maximum + 0.0;
    documentDidChange();
}
