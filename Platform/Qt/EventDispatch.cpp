#include "Platform/Qt/EventDispatch.h"

#include "Platform/Qt/HiddenState.h"
#include "Platform/Qt/Tracking.h"

#include <QThread>

#include <utility>
#include <vector>

namespace {

constexpr int noLoop = -1;
int innermostLoopLevel = noLoop; ///< Of the innermost handling scope.

struct Frame {
    NSEvent event;
    bool unhandled { false };
    bool offered { false };
};

std::vector<Frame>& frames()
{
    static auto& stack = *new std::vector<Frame>;
    return stack;
}

int loopLevel()
{
    return QThread::currentThread()->loopLevel();
}

} // namespace

HandlingScope::HandlingScope()
    : m_outerLoopLevel(std::exchange(innermostLoopLevel, loopLevel()))
{
}

HandlingScope::~HandlingScope()
{
    int const level = innermostLoopLevel;
    if (m_outerLoopLevel != level) {
        settleHidden();
        runScheduledTrackingCheck();
    }
    innermostLoopLevel = m_outerLoopLevel;
}

bool HandlingScope::isHandling()
{
    return innermostLoopLevel != noLoop;
}

bool HandlingScope::isHandlingInThisLoop()
{
    return innermostLoopLevel == loopLevel();
}

EventScope::EventScope(NSEvent event)
{
    frames().push_back({ .event = std::move(event) });
}

EventScope::~EventScope()
{
    frames().pop_back();
}

bool EventScope::wasHandled() const
{
    return !frames().back().unhandled;
}

std::optional<NSEvent> EventScope::currentEvent()
{
    return frames().empty() ? std::nullopt : std::optional(frames().back().event);
}

void EventScope::markUnhandled()
{
    if (!frames().empty()) {
        frames().back().unhandled = true;
    }
}

void EventScope::setLocation(NSPoint location)
{
    if (!frames().empty()) {
        frames().back().event.locationInView = location;
    }
}

bool EventScope::markOffered()
{
    return !frames().empty() && std::exchange(frames().back().offered, true);
}
