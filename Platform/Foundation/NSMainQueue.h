#pragma once

#include "Platform/Foundation/Export.h"

#include <functional>

/// The main dispatch queue: blocks that run later on the main thread, in the order in which they
/// were added, each on a later turn of the event loop and before the next input event is handled.
class PLATFORM_API NSMainQueue {
public:
    /// Adds a block. May be called from any thread.
    static void async(std::function<void()> block);

    /// Runs every block that is in the queue now; blocks added meanwhile wait for the next turn.
    static void runPending();

    /// Installed by the event loop: called whenever the queue stops being empty, from any thread.
    static void setWaker(std::function<void()> waker);
};
