#pragma once

#include "Platform/Foundation/NSObject.h"

#include <map>
#include <optional>

/// An archive of one object, as the interface loader hands it to `initWithCoder`: keys and texts.
/// A coder that failed to decode yields no object.
class PLATFORM_API NSCoder final {
public:
    NSCoder() = default;
    explicit NSCoder(std::map<std::string, std::string, std::less<>> values)
        : m_values(std::move(values))
    {
    }

    std::optional<std::string> decodeString(std::string_view key) const
    {
        auto const entry = m_values.find(key);
        return entry == m_values.end() ? std::nullopt : std::optional(entry->second);
    }

    bool failed() const { return m_failed; }
    void failWithError() { m_failed = true; }

private:
    std::map<std::string, std::string, std::less<>> m_values;
    bool m_failed { false };
};
