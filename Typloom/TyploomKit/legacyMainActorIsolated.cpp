#include "Typloom/TyploomKit/legacyMainActorIsolated.h"

#include "Platform/Foundation/NSMainQueue.h"
#include "Platform/Foundation/NSMainThread.h"

void legacyMainActorIsolated(std::function<void()> const& closure, std::source_location location)
{
    if (NSIsMainThread()) {
        closure();
        return;
    }
    NSAssertMainThread(location);
    NSMainQueue::async(closure);
}
