#pragma once

#include "Platform/AppKit/NSGeometry.h"
#include "Platform/Foundation/NSObject.h"

enum class NSEventType {
    leftMouseDown,
    leftMouseUp,
    leftMouseDragged,
    rightMouseDown,
    mouseMoved,
    mouseEntered,
    mouseExited,
    scrollWheel,
    keyDown,
    other,
};

/// Keys that a control acts on by themselves; every other key comes as its text.
enum class NSKey {
    none,
    left,
    right,
    up,
    down,
    pageUp,
    pageDown,
    home,
    end,
    backspace,
    deleteForward,
    escape,
    enter,
    tab
};

struct NSEventModifiers {
    bool shift { false };
    bool control { false };
    bool alt { false };
    bool operator==(NSEventModifiers const&) const = default;
};

/// One event of the mouse or keyboard, as it is being handled.
struct NSEvent {
    NSEventType type { NSEventType::other };
    NSPoint locationInView; ///< In the view that handles it.
    int clickCount { 0 }; ///< 1 for a single press, 2 for the second press of a double click, ...
    NSEventModifiers modifiers;
    NSKey key { NSKey::none };
    std::string characters; ///< UTF-8; empty unless the event is a key.
    NSPoint scrollingDelta; ///< Points; positive y scrolls towards the beginning.
};
