#include "Platform/Foundation/NSMainQueue.h"

#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

namespace {

struct Entry {
    std::uint64_t ticket;
    std::function<void()> block;
};

/// Never destroyed: a thread that is still running at exit may add a block.
struct Queue {
    std::mutex mutex;
    std::deque<Entry> entries;
    std::uint64_t nextTicket { 0 };
    std::function<void()> waker;

    static Queue& main()
    {
        static auto* const instance = new Queue;
        return *instance;
    }

    /// The first block with a ticket below the limit; the lock is not held while it runs.
    std::optional<std::function<void()>> takeBefore(std::uint64_t limit)
    {
        std::scoped_lock const lock(mutex);
        if (entries.empty() || entries.front().ticket >= limit) {
            return std::nullopt;
        }
        auto block = std::move(entries.front().block);
        entries.pop_front();
        return block;
    }

    std::function<void()> wakerIfFilled()
    {
        std::scoped_lock const lock(mutex);
        return entries.empty() ? nullptr : waker;
    }
};

} // namespace

void NSMainQueue::async(std::function<void()> block)
{
    auto& queue = Queue::main();
    std::function<void()> wake;
    {
        std::scoped_lock const lock(queue.mutex);
        if (queue.entries.empty()) {
            wake = queue.waker;
        }
        queue.entries.push_back({ queue.nextTicket++, std::move(block) });
    }
    if (wake) {
        wake();
    }
}

void NSMainQueue::runPending()
{
    auto& queue = Queue::main();
    std::uint64_t limit;
    {
        std::scoped_lock const lock(queue.mutex);
        limit = queue.nextTicket;
    }
    // By tickets, not by count: a block may run an event loop of its own (a dialog), in which the
    // rest of this turn's blocks and later ones run, and this turn must not go on to newer ones.
    while (auto block = queue.takeBefore(limit)) {
        (*block)();
    }
    if (auto wake = queue.wakerIfFilled()) {
        wake();
    }
}

void NSMainQueue::setWaker(std::function<void()> waker)
{
    auto& queue = Queue::main();
    {
        std::scoped_lock const lock(queue.mutex);
        queue.waker = std::move(waker);
    }
    if (auto wake = queue.wakerIfFilled()) {
        wake();
    }
}
