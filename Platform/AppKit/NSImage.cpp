#include "Platform/AppKit/NSImage.h"

#include "Platform/Qt/SymbolIcons.h"

std::shared_ptr<NSImage> NSImage::imageWithSystemSymbolName(
    std::string_view name, std::optional<std::string> accessibilityDescription)
{
    if (symbolShape(name).isEmpty()) {
        return nullptr;
    }
    return std::make_shared<NSImage>(
        std::string(name), std::move(accessibilityDescription), NSImageSymbolConfiguration {});
}

std::shared_ptr<NSImage> NSImage::imageWithSymbolConfiguration(NSImageSymbolConfiguration configuration) const
{
    return std::make_shared<NSImage>(m_symbolName, m_accessibilityDescription, configuration);
}

NSImage::NSImage(std::string symbolName, std::optional<std::string> accessibilityDescription,
    NSImageSymbolConfiguration configuration)
    : m_symbolName(std::move(symbolName))
    , m_accessibilityDescription(std::move(accessibilityDescription))
    , m_configuration(configuration)
{
}
