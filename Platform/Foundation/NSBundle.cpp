#include "Platform/Foundation/NSBundle.h"

#include "Platform/Foundation/NSLocale.h"

#include <cstdio>
#include <fstream>
#include <iterator>

namespace {

/// Bundles live as long as the process, like the code that they belong to.
struct Registry {
    std::shared_ptr<NSBundle> mainBundle { std::make_shared<NSBundle>(std::filesystem::path()) };
    std::map<std::filesystem::path, std::shared_ptr<NSBundle>> byFolder;
    std::map<std::string, std::shared_ptr<NSBundle>, std::less<>> byIdentifier; ///< The last one opened.

    static Registry& instance()
    {
        static auto* const registry = new Registry;
        return *registry;
    }
};

/// Absolute and without a trailing slash, which would leave the folder without a name.
std::filesystem::path normalized(std::filesystem::path const& path)
{
    if (path.empty()) {
        return path;
    }
    std::error_code error;
    auto const absolute = std::filesystem::absolute(path, error).lexically_normal();
    return absolute.has_filename() ? absolute : absolute.parent_path();
}

std::string readFile(std::filesystem::path const& file)
{
    std::ifstream stream(file, std::ios::binary);
    return { std::istreambuf_iterator<char>(stream), {} };
}

/// A description is a few lines; a file beyond this is none.
constexpr std::uintmax_t largestDescription = 1 << 20;

/// Empty where a bundle's description names none.
std::string describedIdentifier(std::filesystem::path const& file)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)
        || std::filesystem::file_size(file, error) > largestDescription) {
        return {};
    }
    auto const description = NSParseStringsTable(readFile(file));
    if (!description) {
        return {};
    }
    auto const entry = description->find("Identifier");
    return entry == description->end() ? std::string() : entry->second;
}

} // namespace

std::shared_ptr<NSBundle> NSBundle::mainBundle()
{
    return Registry::instance().mainBundle;
}

void NSBundle::setMainBundlePath(std::filesystem::path path)
{
    Registry::instance().mainBundle = std::make_shared<NSBundle>(std::move(path));
}

std::shared_ptr<NSBundle> NSBundle::bundleWithPath(std::filesystem::path const& path)
{
    std::error_code error;
    auto const folder = std::filesystem::canonical(path, error);
    if (error || !std::filesystem::is_directory(folder, error)) {
        return nullptr;
    }
    auto& bundle = Registry::instance().byFolder[folder];
    if (!bundle) {
        bundle = std::make_shared<NSBundle>(path);
        Registry::instance().byIdentifier[bundle->identifier()] = bundle;
    }
    return bundle;
}

std::shared_ptr<NSBundle> NSBundle::bundleWithIdentifier(std::string_view identifier)
{
    auto const& bundles = Registry::instance().byIdentifier;
    auto const found = bundles.find(identifier);
    return found == bundles.end() ? nullptr : found->second;
}

NSBundle::NSBundle(std::filesystem::path path)
    : m_path(normalized(path))
    , m_identifier(m_path.empty() ? std::string() : describedIdentifier(m_path / "Info.strings"))
{
    if (m_identifier.empty()) {
        m_identifier = m_path.stem().string();
    }
}

std::optional<std::filesystem::path> NSBundle::pathForResource(
    std::string_view name, std::string_view extension) const
{
    if (m_path.empty()) {
        return std::nullopt;
    }
    auto file = m_path / "Resources" / std::string(name).append(".").append(extension);
    std::error_code error;
    return std::filesystem::is_regular_file(file, error) ? std::optional(std::move(file)) : std::nullopt;
}

std::string NSBundle::localizedString(std::string_view key, std::string_view defaultValue) const
{
    for (auto const& language : NSPreferredLanguages()) {
        auto const& strings = table(language);
        if (auto const entry = strings.find(key); entry != strings.end()) {
            return entry->second;
        }
    }
    return std::string(defaultValue);
}

NSBundle::StringTable const& NSBundle::table(std::string const& language) const
{
    auto const [entry, isNew] = m_tables.try_emplace(language);
    auto const file = isNew ? pathForResource(language + ".lproj/Localizable", "strings") : std::nullopt;
    if (file) {
        if (auto strings = NSParseStringsTable(readFile(*file))) {
            entry->second = std::move(*strings);
        } else {
            std::fprintf(stderr, "Cannot read %s: it is no table of strings\n", file->c_str());
        }
    }
    return entry->second;
}

std::string NSLocalizedString(std::string_view key, std::shared_ptr<NSBundle> const& bundle,
    std::string_view defaultValue, [[maybe_unused]] std::string_view comment)
{
    return (bundle ? bundle : NSBundle::mainBundle())->localizedString(key, defaultValue);
}
