#pragma once

#include "Typloom/TyploomCore/Export.h"

#include <functional>
#include <source_location>

/// Runs a closure that must run on the main thread, there: at once when the caller is on it
/// (all callers are expected to be), otherwise on the main queue after a diagnostic.
TYPLOOM_API void legacyMainActorIsolated(
    std::function<void()> const& closure, std::source_location location = std::source_location::current());
