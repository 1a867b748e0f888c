#include "Platform/AppKit/NSApplication.h"

#include "Platform/AppKit/NSPopover.h"
#include "Platform/Foundation/NSMainThread.h"
#include "Platform/Qt/EventDispatch.h"

#include <QApplication>

#include <utility>

static std::function<void()>& beepHandler()
{
    static std::function<void()> handler;
    return handler;
}

std::optional<NSEvent> NSApplication::currentEvent()
{
    NSAssertMainThread();
    return EventScope::currentEvent();
}

void NSApplication::closeTransientPopovers()
{
    NSAssertMainThread();
    for (auto const& popover : NSPopover::shownPopovers()) {
        if (popover->behavior() == NSPopoverBehavior::transient) {
            popover->close();
        }
    }
}

void NSBeep()
{
    NSAssertMainThread();
    if (beepHandler()) {
        beepHandler()();
    } else {
        QApplication::beep();
    }
}

void NSSetBeepHandler(std::function<void()> handler)
{
    beepHandler() = std::move(handler);
}
