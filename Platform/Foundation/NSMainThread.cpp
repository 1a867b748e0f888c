#include "Platform/Foundation/NSMainThread.h"

#include <cstdio>
#include <mutex>
#include <thread>
#include <utility>

static std::thread::id const mainThread = std::this_thread::get_id();

static void printViolation(std::string const& message)
{
    std::string const line = message + '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

namespace {

/// Violations come from other threads by their nature, so the handler is behind a lock.
struct ViolationHandler {
    std::mutex mutex;
    NSMainThreadViolationHandler handler { printViolation };

    static ViolationHandler& current()
    {
        static auto* const instance = new ViolationHandler;
        return *instance;
    }
};

} // namespace

bool NSIsMainThread()
{
    return std::this_thread::get_id() == mainThread;
}

void NSAssertMainThread(std::source_location location)
{
    if (NSIsMainThread()) {
        return;
    }
    auto& current = ViolationHandler::current();
    NSMainThreadViolationHandler handler;
    {
        std::scoped_lock const lock(current.mutex);
        handler = current.handler;
    }
    handler(std::string(location.file_name()) + ':' + std::to_string(location.line()) + ": "
        + location.function_name() + " must run on the main thread");
}

NSMainThreadViolationHandler NSSetMainThreadViolationHandler(NSMainThreadViolationHandler handler)
{
    if (!handler) {
        handler = printViolation;
    }
    auto& current = ViolationHandler::current();
    std::scoped_lock const lock(current.mutex);
    return std::exchange(current.handler, std::move(handler));
}
