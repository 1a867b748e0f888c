#include "Typloom/TyploomCore/TLAxis.h"

#include "Typloom/TyploomCore/DocumentRevision.h"

#include <cmath>
#include <random>

namespace {

/// 128 random bits: distinct from every identifier that was ever stored, in this family or another.
std::string freshIdentifier()
{
    static constexpr std::string_view digits = "0123456789ABCDEF";
    static std::random_device device;
    std::uniform_int_distribution<std::size_t> digit(0, digits.size() - 1);
    std::string identifier(32, '0');
    for (char& character : identifier) {
        character = digits[digit(device)];
    }
    return identifier;
}

} // namespace

TLAxis::TLAxis()
    : TLAxis(TLAxisState { .axisId = freshIdentifier() })
{
}

TLAxis::TLAxis(std::string axisId, std::string name)
    : TLAxis(TLAxisState { .axisId = std::move(axisId), .name = std::move(name) })
{
}

TLAxis::TLAxis(TLAxisState state)
    : m_state(std::move(state))
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
    if (name == m_state.name) {
        return;
    }
    willChange();
    m_state.name = std::move(name);
    documentDidChange();
}

void TLAxis::setDefaultValue(double value)
{
    if (!std::isfinite(value) || value == m_state.defaultValue) {
        return;
    }
    willChange();
    m_state.defaultValue = value + 0.0; // -0 becomes 0.
    documentDidChange();
}

void TLAxis::setBounds(double minimum, double maximum)
{
    if (!std::isfinite(minimum) || !std::isfinite(maximum)) {
        return;
    }
    willChange();
    m_state.minimum = minimum + 0.0;
    m_state.maximum = maximum + 0.0;
    documentDidChange();
}
