#include "Platform/AppKit/NSAnimationContext.h"

#include "Platform/Foundation/NSMainThread.h"

#include <deque>

/// The open groups, the innermost last; the first is there always. A deque, since a context stays
/// where it is while groups inside it are opened.
static std::deque<NSAnimationContext>& contexts()
{
    static std::deque<NSAnimationContext> stack(1);
    return stack;
}

void NSAnimationContext::runAnimationGroup(std::function<void(NSAnimationContext&)> const& changes)
{
    beginGrouping();
    changes(currentContext());
    endGrouping();
}

void NSAnimationContext::beginGrouping()
{
    NSAssertMainThread();
    // A group starts out from what holds around it.
    contexts().push_back(NSAnimationContext(currentContext()));
}

void NSAnimationContext::endGrouping()
{
    NSAssertMainThread();
    if (contexts().size() > 1) {
        contexts().pop_back();
    }
}

NSAnimationContext& NSAnimationContext::currentContext()
{
    return contexts().back();
}
