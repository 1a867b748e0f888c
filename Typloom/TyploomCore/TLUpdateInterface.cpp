#include "Typloom/TyploomCore/TLUpdateInterface.h"

#include "Platform/Foundation/NSMainQueue.h"
#include "Platform/Foundation/NSNotificationCenter.h"
#include "Typloom/TyploomCore/UpdateSuspension.h"

#include <atomic>

std::string const TLUpdateInterface = "TLUpdateInterface";

namespace {

std::atomic<bool> s_updateIsPending { false };
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

void TLSetNeedsUpdateInterface()
{
    if (t_suspensions > 0 || s_updateIsPending.exchange(true)) {
        return;
    }
    NSMainQueue::async([] {
        // Cleared first: what an observer changes while it is told needs an update of its own.
        s_updateIsPending = false;
        NSNotificationCenter::defaultCenter().post(TLUpdateInterface);
    });
}
