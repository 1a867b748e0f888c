#pragma once

#include "Platform/Foundation/Export.h"

#include <functional>
#include <source_location>
#include <string>

/// Whether the caller runs on the main thread: the thread that loaded the platform library.
PLATFORM_API bool NSIsMainThread();

/// Checks that the caller runs on the main thread. A violation prints one line with file and line
/// of the caller to the standard error stream, and the program goes on.
PLATFORM_API void NSAssertMainThread(std::source_location location = std::source_location::current());

/// Replaces what a violation does (by default: print). Returns the handler before; for tests.
using NSMainThreadViolationHandler = std::function<void(std::string const& message)>;
PLATFORM_API NSMainThreadViolationHandler NSSetMainThreadViolationHandler(
    NSMainThreadViolationHandler handler);
