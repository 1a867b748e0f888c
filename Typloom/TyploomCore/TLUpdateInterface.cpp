#include "Typloom/TyploomCore/TLUpdateInterface.h"

#include "Platform/Foundation/NSMainQueue.h"
#include "Platform/Foundation/NSNotificationCenter.h"
#include "Typloom/TyploomCore/DocumentRevision.h"
#include "Typloom/TyploomCore/UpdateSuspension.h"

#include <atomic>

std::string const TLUpdateInterface = "TLUpdateInterface";
std::string const TLWillUpdateInterface = "TLWillUpdateInterface";

namespace {

std::atomic<bool> s_updateIsPending { false };
std::atomic<std::uint64_t> s_revision { 1 };
thread_local int t_suspensions = 0;

} // namespace

UpdateSuspension::UpdateSuspension()
{
    ++t_suspensions;
}

UpdateSuspension::~UpdateSuspension()
{
    --t_suspensions;
}

bool UpdateSuspension::isActive()
{
    return t_suspensions > 0;
}

void TLSetNeedsUpdateInterface()
{
    if (t_suspensions > 0 || s_updateIsPending.exchange(true)) {
        return;
    }
    NSMainQueue::async([] {
        // Cleared first: what an observer changes while it is told needs an update of its own.
        s_updateIsPending = false;
        NSNotificationCenter::defaultCenter().post(TLWillUpdateInterface);
        NSNotificationCenter::defaultCenter().post(TLUpdateInterface);
    });
}

std::uint64_t documentRevision()
{
    return s_revision;
}

void documentDidChange()
{
    ++s_revision; // While updates are suspended too: that hides changes from people, not from caches.
    TLSetNeedsUpdateInterface();
}
