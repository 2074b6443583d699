// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/TimerQueue.h"

#include <gtest/gtest.h>

#include <string>

namespace velarin::live {
namespace {

using namespace std::chrono_literals;

class TimerQueueTest : public testing::Test
{
protected:
    TimerQueue::Key add(std::chrono::nanoseconds due, char name)
    {
        return m_queue.add(due, [this, name] { m_fired += name; });
    }

    TimerQueue m_queue;
    std::string m_fired;
};

TEST_F(TimerQueueTest, firesWhatIsDueInItsOrder)
{
    add(3ms, 'c');
    add(1ms, 'a');
    add(1ms, 'b');
    add(5ms, 'd');
    m_queue.fireDue(3ms);
    EXPECT_EQ(m_fired, "abc");
    EXPECT_EQ(m_queue.nextDue(), 5ms);
}

TEST_F(TimerQueueTest, aCancelledTimerDoesNotFire)
{
    const TimerQueue::Key first = add(1ms, 'a');
    add(2ms, 'b');
    m_queue.cancel(first);
    m_queue.fireDue(9ms);
    EXPECT_EQ(m_fired, "b");
    EXPECT_FALSE(m_queue.nextDue());
}

TEST_F(TimerQueueTest, aTimerMayCancelOneThatIsDueWithIt)
{
    TimerQueue::Key second;
    m_queue.add(1ms, [&] { m_queue.cancel(second); });
    second = add(1ms, 'b');
    m_queue.fireDue(1ms);
    EXPECT_EQ(m_fired, "");
}

TEST_F(TimerQueueTest, whatATimerAddsWaitsForTheNextTurn)
{
    m_queue.add(1ms, [this] { add(0ms, 'n'); });
    m_queue.fireDue(1ms);
    EXPECT_EQ(m_fired, "");
    m_queue.fireDue(1ms);
    EXPECT_EQ(m_fired, "n");
}

}
}
