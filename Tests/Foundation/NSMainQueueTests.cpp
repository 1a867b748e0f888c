#include "Platform/Foundation/NSMainQueue.h"
#include "Platform/Foundation/NSMainThread.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

struct NSMainQueueTest : testing::Test {
    ~NSMainQueueTest() override { NSMainQueue::setWaker(nullptr); }
    std::vector<int> order;
    void add(int number, std::function<void()> action = nullptr)
    {
        NSMainQueue::async([this, number, action] {
            order.push_back(number);
            if (action) {
                action();
            }
        });
    }
};

} // namespace

TEST_F(NSMainQueueTest, blocksRunInTheirOrderAndThoseAddedMeanwhileWait)
{
    add(1, [&] { add(3); });
    add(2);
    EXPECT_THAT(order, ElementsAre());
    NSMainQueue::runPending();
    EXPECT_THAT(order, ElementsAre(1, 2));
    NSMainQueue::runPending();
    EXPECT_THAT(order, ElementsAre(1, 2, 3));
}

TEST_F(NSMainQueueTest, aLoopInsideABlockRunsTheRestAndTheOuterTurnDoesNotRunNewerOnes)
{
    add(1, [&] {
        add(3);
        NSMainQueue::runPending();
        add(4);
    });
    add(2);
    NSMainQueue::runPending();
    EXPECT_THAT(order, ElementsAre(1, 2, 3));
    NSMainQueue::runPending();
    EXPECT_THAT(order, ElementsAre(1, 2, 3, 4));
}

TEST_F(NSMainQueueTest, theWakerIsCalledWheneverThereIsSomethingNewToRun)
{
    add(1);
    int calls = 0;
    NSMainQueue::setWaker([&] { ++calls; });
    EXPECT_EQ(calls, 1); // For the block that was there before.
    add(2, [&] { add(3); });
    EXPECT_EQ(calls, 1); // The queue was not empty.
    NSMainQueue::runPending();
    EXPECT_GE(calls, 2); // A block is left over for the next turn.
    calls = 0;
    NSMainQueue::runPending();
    EXPECT_EQ(calls, 0);
    add(4);
    EXPECT_EQ(calls, 1);
    NSMainQueue::runPending();
}

TEST_F(NSMainQueueTest, blocksFromManyThreadsAllRunOnTheMainThread)
{
    std::atomic<int> wakes = 0;
    NSMainQueue::setWaker([&] { ++wakes; });
    int ran = 0;
    bool allOnMainThread = true;
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int i = 0; i < 500; ++i) {
                NSMainQueue::async([&] {
                    ++ran;
                    allOnMainThread = allOnMainThread && NSIsMainThread();
                });
            }
        });
    }
    while (ran < 1000) {
        NSMainQueue::runPending();
    }
    threads.clear();
    NSMainQueue::runPending();
    EXPECT_EQ(ran, 2000);
    EXPECT_TRUE(allOnMainThread);
    EXPECT_GE(wakes, 1);
}

TEST(NSMainThread, aViolationNamesFileAndLineOfTheCallerAndTheProgramGoesOn)
{
    std::vector<std::string> messages;
    auto const before
        = NSSetMainThreadViolationHandler([&](std::string const& message) { messages.push_back(message); });
    NSAssertMainThread();
    int line = 0;
    bool isMain = true;
    std::jthread([&] {
        isMain = NSIsMainThread();
        line = __LINE__ + 1;
        NSAssertMainThread();
    }).join();
    NSSetMainThreadViolationHandler(before);
    EXPECT_FALSE(isMain);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_THAT(messages[0], HasSubstr("NSMainQueueTests.cpp:" + std::to_string(line)));
}

TEST(NSMainThread, aViolationIsPrintedAsOneLineByDefault)
{
    testing::internal::CaptureStderr();
    std::jthread([] { NSAssertMainThread(); }).join();
    auto const printed = testing::internal::GetCapturedStderr();
    EXPECT_THAT(printed, HasSubstr("NSMainQueueTests.cpp:"));
    EXPECT_EQ(std::count(printed.begin(), printed.end(), '\n'), 1);
}
