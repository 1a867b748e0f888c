#pragma once

#include "Platform/Foundation/Export.h"

#include <string>
#include <string_view>

/// Operations on UTF-8 text that need Unicode or the user's locale.

/// Whether `text` contains `query` as a substring without regard to letter case under the user's
/// current locale; diacritics count, canonically equivalent forms are the same. An empty query
/// is contained in no text.
PLATFORM_API bool NSLocalizedCaseInsensitiveContains(std::string_view text, std::string_view query);

/// Whether both are the same Unicode text; canonically equivalent forms are equal, case matters.
PLATFORM_API bool NSStringIsEqual(std::string_view left, std::string_view right);

enum class NSCharacterSet {
    whitespace, ///< Space separators (general category Zs) and the horizontal tab.
    whitespaceAndNewlines, ///< Those, and U+000A to U+000D, U+0085, U+2028 and U+2029.
};

/// The text without leading and trailing characters of the set; inner ones stay.
PLATFORM_API std::string NSStringByTrimming(std::string_view text, NSCharacterSet set);
