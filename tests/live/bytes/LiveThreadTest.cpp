// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/LiveThread.h"

#include "RecordingListener.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <ctime>

namespace velarin::live {
namespace {

using namespace std::chrono_literals;
using test::runOn;
using test::waitUntil;

// CPU time of this program.
std::chrono::nanoseconds processorTime()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

TEST(LiveThreadTest, postedWorkRunsInOrderOnAThreadOfItsOwn)
{
    LiveThread thread;
    std::vector<int> order;
    std::thread::id where;
    for (int index = 0; index < 100; ++index)
        thread.post([&order, index] { order.push_back(index); });
    runOn(thread, [&where] { where = std::this_thread::get_id(); });
    EXPECT_NE(where, std::this_thread::get_id());
    ASSERT_EQ(order.size(), 100u);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST(LiveThreadTest, workPostedByWorkRunsInALaterTurn)
{
    LiveThread thread;
    std::promise<bool> ranInside;
    thread.post([&] {
        auto inside = std::make_shared<bool>(true);
        thread.post([&ranInside, inside] { ranInside.set_value(*inside); });
        *inside = false;
    });
    EXPECT_FALSE(ranInside.get_future().get());
}

TEST(LiveThreadTest, aTimerFiresOnceAndNotBeforeItsTime)
{
    LiveThread thread;
    std::atomic<int> fired{ 0 };
    std::chrono::nanoseconds took{ 0 };
    Task timer;
    runOn(thread, [&] {
        const std::chrono::nanoseconds begin = thread.now();
        timer = thread.after(30ms, [&, begin] {
            took = thread.now() - begin;
            ++fired;
        });
    });
    ASSERT_TRUE(waitUntil([&] { return fired == 1; }));
    EXPECT_GE(took, 30ms);
    EXPECT_LT(took, 500ms);
    runOn(thread, [&] { timer.cancel(); });
    EXPECT_EQ(fired, 1);
}

TEST(LiveThreadTest, aCancelledTimerDoesNotFire)
{
    LiveThread thread;
    std::atomic<bool> late{ false };
    std::atomic<bool> fired{ false };
    Task kept;
    runOn(thread, [&] {
        Task dropped = thread.after(5ms, [&] { fired = true; });
        kept = thread.after(20ms, [&] { late = true; });
    });
    ASSERT_TRUE(waitUntil([&] { return late.load(); }));
    EXPECT_FALSE(fired);
    runOn(thread, [&] { kept = {}; });
}

TEST(LiveThreadTest, aTaskMayOutliveTheThread)
{
    Task timer;
    {
        LiveThread thread;
        runOn(thread, [&] { timer = thread.after(1h, [] { FAIL(); }); });
    }
    timer.cancel();
    EXPECT_FALSE(timer);
}

TEST(LiveThreadTest, theEndRunsWhatWasPostedBefore)
{
    int ran = 0;
    {
        LiveThread thread;
        for (int index = 0; index < 50; ++index)
            thread.post([&ran] { ++ran; });
    }
    EXPECT_EQ(ran, 50);
}

TEST(LiveThreadTest, withNothingToDoItSleeps)
{
    LiveThread thread;
    runOn(thread, [] {});
    const std::chrono::nanoseconds before = processorTime();
    std::this_thread::sleep_for(1s);
    EXPECT_LT(processorTime() - before, 5ms);
}

TEST(LiveThreadTest, aWaitForATimerIsNoBusyLoop)
{
    LiveThread thread;
    std::atomic<bool> fired{ false };
    Task timer;
    const std::chrono::nanoseconds before = processorTime();
    runOn(thread, [&] { timer = thread.after(300ms, [&] { fired = true; }); });
    while (!fired)
        std::this_thread::sleep_for(20ms);
    EXPECT_LT(processorTime() - before, 20ms);
    runOn(thread, [&] { timer = {}; });
}

}
}
