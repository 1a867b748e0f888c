#pragma once

#include "Platform/AppKit/NSEvent.h"
#include "Platform/Foundation/Export.h"

#include <functional>
#include <memory>
#include <optional>

class QEvent;
class QObject;
class QWidget;

/// Marks that something is being handled: an event, or a block of the main queue. At the end of
/// the outermost scope (of each event loop) what was put off is done: widgets are hidden and shown,
/// and the pointer's place among the tracking areas is looked at again.
class PLATFORM_API HandlingScope {
public:
    HandlingScope();
    ~HandlingScope();
    HandlingScope(HandlingScope const&) = delete;

    static bool isHandling();
    /// Whether what is being handled now belongs to an event loop inside which another one runs.
    static bool isHandlingInThisLoop();

private:
    int m_outerLoopLevel;
};

/// The handling of one event; while it lives, the event is the application's current one.
class PLATFORM_API EventScope {
public:
    explicit EventScope(NSEvent event);
    ~EventScope();

    /// False when the event came to the end of the chain of views and none acted on it.
    bool wasHandled() const;

    static std::optional<NSEvent> currentEvent();
    /// Of the innermost scope; for `NSView`, at the end of the chain.
    static void markUnhandled();
    /// Replaces where the current event is, for the view that is about to get it.
    static void setLocation(NSPoint location);
    /// Whether views have been offered the current event already. The first call gives false and notes it.
    static bool markOffered();

private:
    HandlingScope m_handling;
};

/// The event in the platform's terms, with its place in `receiver`. The click count is that of the
/// last press.
NSEvent eventFromToolkit(QEvent const& event, QWidget const& receiver);

/// The timestamp and place of each press give the click count, also for events that were sent to a
/// widget directly.
void countClick(QEvent const& press);

/// The widget that a mouse button went down on and is held over, null when none is.
QWidget* pressedWidget();

/// Told before a mouse press is delivered, with the widget that gets it (null: none). The observer
/// ends when the returned handle does.
using PressObserver = std::function<void(QWidget* target)>;
[[nodiscard]] std::shared_ptr<void> observePresses(PressObserver observer);
