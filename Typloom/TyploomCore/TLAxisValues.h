#pragma once

#include "Typloom/TyploomCore/Export.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// An axis identifier as a number, the same for equal texts as long as the program runs: a search
/// that asks every layer about every axis has no time for texts.
enum class TLAxisKey : std::uint32_t {};

TYPLOOM_API TLAxisKey TLAxisKeyForId(std::string_view axisId);
/// The same, none for a text that has no key yet: nothing has a value under it.
TYPLOOM_API std::optional<TLAxisKey> TLKnownAxisKey(std::string_view axisId);
TYPLOOM_API std::string const& TLAxisIdForKey(TLAxisKey key);

/// Numbers by axis, ascending by key.
class TLAxisValues {
public:
    /// Null when there is none. `hint` is where the value may lie: often the axis's own index.
    double const* find(TLAxisKey key, std::size_t hint = 0) const
    {
        if (hint < m_keys.size() && m_keys[hint] == key) {
            return &m_values[hint];
        }
        auto const at = std::lower_bound(m_keys.begin(), m_keys.end(), key);
        return at == m_keys.end() || *at != key ? nullptr : &m_values[std::size_t(at - m_keys.begin())];
    }
    void set(TLAxisKey key, double value)
    {
        auto const index = std::lower_bound(m_keys.begin(), m_keys.end(), key) - m_keys.begin();
        if (std::size_t(index) < m_keys.size() && m_keys[std::size_t(index)] == key) {
            m_values[std::size_t(index)] = value;
            return;
        }
        m_keys.insert(m_keys.begin() + index, key);
        m_values.insert(m_values.begin() + index, value);
    }

    std::vector<TLAxisKey> const& keys() const { return m_keys; }
    std::vector<double> const& values() const { return m_values; } ///< As many as keys.
    bool operator==(TLAxisValues const&) const = default;

private:
    std::vector<TLAxisKey> m_keys;
    std::vector<double> m_values;
};
