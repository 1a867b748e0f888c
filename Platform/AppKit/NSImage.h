#pragma once

#include "Platform/Foundation/NSObject.h"

#include <optional>

enum class NSImageSymbolScale { small, medium, large };

struct NSImageSymbolConfiguration {
    NSImageSymbolScale scale { NSImageSymbolScale::medium };
    bool operator==(NSImageSymbolConfiguration const&) const = default;
};

/// A picture that takes the text colour of where it is shown. System symbols are drawn by the
/// platform and known by name.
class PLATFORM_API NSImage final : public NSObject {
public:
    /// The system symbol of that name, null when the platform has none.
    static std::shared_ptr<NSImage> imageWithSystemSymbolName(
        std::string_view name, std::optional<std::string> accessibilityDescription = {});

    /// A copy with the configuration; null when it cannot be applied.
    std::shared_ptr<NSImage> imageWithSymbolConfiguration(NSImageSymbolConfiguration configuration) const;

    NSImage(std::string symbolName, std::optional<std::string> accessibilityDescription,
        NSImageSymbolConfiguration configuration);
    std::string const& symbolName() const { return m_symbolName; }
    std::optional<std::string> const& accessibilityDescription() const { return m_accessibilityDescription; }
    NSImageSymbolConfiguration const& symbolConfiguration() const { return m_configuration; }

private:
    std::string m_symbolName;
    std::optional<std::string> m_accessibilityDescription;
    NSImageSymbolConfiguration m_configuration;
};
