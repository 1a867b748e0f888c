#pragma once

#include "Platform/Foundation/Export.h"

#include <string>
#include <string_view>
#include <vector>

/// The user's languages, the most preferred first, as in "de-CH", "de".
PLATFORM_API std::vector<std::string> NSPreferredLanguages();

/// Makes another locale the current one, by name ("de_DE"); an empty name gives the system's back.
/// Notified to nobody: for the start of the program and for tests.
PLATFORM_API void NSSetCurrentLocale(std::string_view name);
