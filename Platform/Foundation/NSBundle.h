#pragma once

#include "Platform/Foundation/NSObject.h"

#include <filesystem>
#include <map>
#include <optional>
#include <vector>

/// A folder of resources: interface descriptions and string tables, as `Resources/NAME.ui` and
/// `Resources/LANGUAGE.lproj/Localizable.strings`.
class PLATFORM_API NSBundle final : public NSObject {
public:
    /// The application's own bundle. Its folder is set once at start; before that it is empty and
    /// finds nothing.
    static std::shared_ptr<NSBundle> mainBundle();
    static void setMainBundlePath(std::filesystem::path path);

    /// The bundle at a folder, one object per folder; null when the folder is not there.
    static std::shared_ptr<NSBundle> bundleWithPath(std::filesystem::path const& path);

    /// The bundle that was opened under that identifier, of several the last; null when none was.
    static std::shared_ptr<NSBundle> bundleWithIdentifier(std::string_view identifier);

    explicit NSBundle(std::filesystem::path path);

    std::filesystem::path const& bundlePath() const { return m_path; }
    /// The "Identifier" of the folder's description `Info.strings`, read once; the folder's name without
    /// extension where there is none.
    std::string const& identifier() const { return m_identifier; }

    /// The file `Resources/NAME.EXTENSION`, none when it is not there.
    std::optional<std::filesystem::path> pathForResource(
        std::string_view name, std::string_view extension) const;

    /// The text under the key in the default strings table, for the first of the user's preferred
    /// languages that has a table with it; `defaultValue` when none has.
    std::string localizedString(std::string_view key, std::string_view defaultValue) const;

private:
    using StringTable = std::map<std::string, std::string, std::less<>>;
    StringTable const& table(std::string const& language) const;

    std::filesystem::path m_path;
    std::string m_identifier;
    mutable std::map<std::string, StringTable> m_tables;
};

/// A text that a person sees: the key, the bundle whose table holds it (null: the main bundle),
/// the English default, and a comment for translators, which only tools read.
PLATFORM_API std::string NSLocalizedString(std::string_view key, std::shared_ptr<NSBundle> const& bundle,
    std::string_view defaultValue, std::string_view comment);

/// Reads `"key" = "value";` pairs with `/* */` and `//` comments. Escapes: \" \\ \n \t \r \uXXXX
/// (surrogate pairs joined). None when the text is not of that form.
PLATFORM_API std::optional<std::map<std::string, std::string, std::less<>>> NSParseStringsTable(
    std::string_view text);
