#pragma once

#include "Platform/Foundation/Export.h"

#include <string_view>

/// Stops the program after one line on the standard error stream. For programming errors only:
/// a required outlet that is not connected, a repeated item in a snapshot.
[[noreturn]] PLATFORM_API void NSFatalError(std::string_view message);
