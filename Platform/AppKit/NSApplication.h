#pragma once

#include "Platform/AppKit/NSEvent.h"

#include <optional>

/// The running program.
class PLATFORM_API NSApplication {
public:
    /// The event that is being handled now; none outside the handling of one.
    static std::optional<NSEvent> currentEvent();

    /// Closes every popover of transient behaviour, as a click outside does.
    static void closeTransientPopovers();
};

/// The system alert sound.
PLATFORM_API void NSBeep();
/// Replaces the alert sound; for tests. An empty function gives the system's back.
PLATFORM_API void NSSetBeepHandler(std::function<void()> handler);
