// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/BootClock.h"

#include "support/WaitUntil.h"

#include <QCoreApplication>
#include <QDir>
#include <QThread>

#include <gmock/gmock.h>

#include <sys/resource.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <random>
#include <vector>

namespace velarin {

namespace {

using namespace std::chrono_literals;
using std::chrono::nanoseconds;
using test::waitUntil;

class BootClockTest : public testing::Test
{
protected:
    // Every timer armed so far has fired when this one has.
    void passTime(nanoseconds duration)
    {
        bool passed = false;
        const Task task = clock->after(duration, [&passed] { passed = true; });
        ASSERT_TRUE(waitUntil([&passed] { return passed; }));
    }

    std::unique_ptr<BootClock> clock{ std::make_unique<BootClock>() };
    int fired{ 0 };
};

TEST_F(BootClockTest, aTimerFiresOnceWhenItsDelayHasPassed)
{
    const nanoseconds start = clock->continuous();
    nanoseconds moment{ 0 };
    const Task task = clock->after(50ms, [&] {
        ++fired;
        moment = clock->continuous();
    });
    passTime(100ms);
    EXPECT_EQ(fired, 1);
    EXPECT_GE(moment - start, 50ms);
    // Generous, for a machine that is busy; a clock of the wrong unit would be far off.
    EXPECT_LT(moment - start, 1s);
}

TEST_F(BootClockTest, aDelayOfZeroFiresInALaterTurn)
{
    const Task task = clock->after(0ns, [this] { ++fired; });
    EXPECT_EQ(fired, 0);
    EXPECT_TRUE(waitUntil([this] { return fired == 1; }));
}

TEST_F(BootClockTest, aNegativeDelayCountsAsZero)
{
    const Task task = clock->after(-5s, [this] { ++fired; });
    EXPECT_EQ(fired, 0);
    EXPECT_TRUE(waitUntil([this] { return fired == 1; }));
}

TEST_F(BootClockTest, timersFireOnTheMainThread)
{
    QThread* firedOn = nullptr;
    const Task task = clock->after(1ms, [&firedOn] { firedOn = QThread::currentThread(); });
    ASSERT_TRUE(waitUntil([&firedOn] { return firedOn != nullptr; }));
    EXPECT_EQ(firedOn, QThread::currentThread());
}

TEST_F(BootClockTest, timersFireInTheOrderOfTheirMoments)
{
    std::vector<int> order;
    const Task last = clock->after(60ms, [&order] { order.push_back(3); });
    const Task first = clock->after(20ms, [&order] { order.push_back(1); });
    const Task second = clock->after(40ms, [&order] { order.push_back(2); });
    ASSERT_TRUE(waitUntil([&order] { return order.size() == 3; }));
    EXPECT_EQ(order, std::vector<int>({ 1, 2, 3 }));
}

TEST_F(BootClockTest, anEarlierTimerIsServedThoughALaterOneWasArmedBefore)
{
    const Task late = clock->after(1h, [this] { fired += 100; });
    const Task early = clock->after(5ms, [this] { ++fired; });
    EXPECT_TRUE(waitUntil([this] { return fired == 1; }));
}

TEST_F(BootClockTest, aCancelledTimerNeverFires)
{
    Task task = clock->after(5ms, [this] { ++fired; });
    task.cancel();
    passTime(30ms);
    EXPECT_EQ(fired, 0);
}

TEST_F(BootClockTest, aTimerCancelledAfterItsTimeHadComeDoesNotFire)
{
    Task task = clock->after(1ms, [this] { ++fired; });
    QThread::msleep(20);
    task.cancel();
    passTime(20ms);
    EXPECT_EQ(fired, 0);
}

TEST_F(BootClockTest, oneTimerMayCancelAnotherOfTheSameTurn)
{
    Task second;
    const Task first = clock->after(1ms, [&] {
        ++fired;
        second.cancel();
    });
    second = clock->after(2ms, [this] { fired += 10; });
    QThread::msleep(20);
    passTime(20ms);
    EXPECT_EQ(fired, 1);
}

TEST_F(BootClockTest, aTimerMayReplaceItself)
{
    Task task;
    std::function<void()> again = [&] {
        if (++fired < 5)
            task = clock->after(1ms, again);
    };
    task = clock->after(1ms, again);
    EXPECT_TRUE(waitUntil([this] { return fired == 5; }));
}

TEST_F(BootClockTest, aTimerThatArmsItselfWithoutDelayLeavesTheEventLoopItsTurns)
{
    Task task;
    std::function<void()> again = [&] {
        ++fired;
        task = clock->after(0ns, again);
    };
    task = clock->after(0ns, again);
    ASSERT_TRUE(waitUntil([this] { return fired >= 3; }));
    bool turned = false;
    QMetaObject::invokeMethod(
        qApp, [&turned] { turned = true; }, Qt::QueuedConnection);
    EXPECT_TRUE(waitUntil([&turned] { return turned; }));
}

TEST_F(BootClockTest, aReleasedTimerFires)
{
    clock->after(1ms, [this] { ++fired; }).release();
    EXPECT_TRUE(waitUntil([this] { return fired == 1; }));
}

TEST_F(BootClockTest, timersDieWithTheClock)
{
    Task task = clock->after(1ms, [this] { ++fired; });
    clock.reset();
    QThread::msleep(20);
    QCoreApplication::processEvents();
    EXPECT_EQ(fired, 0);
    task.cancel();
}

TEST_F(BootClockTest, aTimerMayDestroyTheClock)
{
    const Task first = clock->after(1ms, [this] {
        ++fired;
        clock.reset();
    });
    const Task second = clock->after(2ms, [this] { fired += 10; });
    QThread::msleep(20);
    ASSERT_TRUE(waitUntil([this] { return fired > 0; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(fired, 1);
}

TEST_F(BootClockTest, aDelayLongerThanTheClockCanCountIsForEver)
{
    const Task task = clock->after(nanoseconds::max(), [this] { ++fired; });
    passTime(20ms);
    EXPECT_EQ(fired, 0);
}

TEST(FromSecondsTest, anyNumberThatAFileMaySayIsADuration)
{
    EXPECT_EQ(fromSeconds(1.5), 1500ms);
    EXPECT_EQ(fromSeconds(-0.4), -400ms);
    EXPECT_EQ(fromSeconds(std::numeric_limits<double>::quiet_NaN()), 0ns);
    EXPECT_GT(fromSeconds(1.0e300), 200 * 365 * 24h);
    EXPECT_LT(fromSeconds(-std::numeric_limits<double>::infinity()), -200 * 365 * 24h);
}

TEST_F(BootClockTest, aThousandTimersInRandomOrderFireSortedAndTakeOneDescriptor)
{
    const auto descriptors = [] { return QDir(QStringLiteral("/proc/self/fd")).count(); };
    const auto before = descriptors();
    std::mt19937 random(7);
    std::vector<int> delays(1000);
    std::generate(delays.begin(), delays.end(), [&random] { return static_cast<int>(random() % 50); });
    std::vector<nanoseconds> moments;
    std::vector<Task> tasks;
    for (const int delay : delays) {
        const nanoseconds due = clock->continuous() + std::chrono::milliseconds(delay);
        tasks.push_back(clock->after(std::chrono::milliseconds(delay), [&moments, due] { moments.push_back(due); }));
    }
    EXPECT_EQ(descriptors(), before);
    ASSERT_TRUE(waitUntil([&moments] { return moments.size() == 1000; }));
    // Each `due` was read a moment before its timer was armed.
    EXPECT_TRUE(std::is_sorted(
        moments.begin(), moments.end(), [](nanoseconds left, nanoseconds right) { return left + 1ms < right; }));
}

TEST_F(BootClockTest, whileNothingIsDueNothingWakesTheProcess)
{
    const auto switches = [] {
        rusage usage{};
        getrusage(RUSAGE_THREAD, &usage);
        return usage.ru_nvcsw;
    };
    const Task far = clock->after(1h, [this] { ++fired; });
    bool passed = false;
    const Task end = clock->after(300ms, [&passed] { passed = true; });
    const long before = switches();
    while (!passed)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_LE(switches() - before, 10);
}

TEST_F(BootClockTest, theWallClockIsInUtcAndTheContinuousOneOnlyRunsForward)
{
    EXPECT_EQ(clock->now().timeSpec(), Qt::UTC);
    EXPECT_LT(std::abs(clock->now().msecsTo(QDateTime::currentDateTimeUtc())), 1000);
    const nanoseconds before = clock->continuous();
    EXPECT_GE(clock->continuous(), before);
}

}

}
