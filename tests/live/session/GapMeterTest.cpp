// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/GapMeter.h"

#include <gtest/gtest.h>

namespace velarin::live {

using namespace std::chrono_literals;

class GapMeterTest : public testing::Test
{
protected:
    void arriveAt(std::chrono::nanoseconds time) { meter.arrived(start + time); }
    [[nodiscard]] double longestAt(std::chrono::nanoseconds time) const { return meter.longest(start + time).count(); }

    const std::chrono::nanoseconds start{ 1h };
    GapMeter meter;
};

TEST_F(GapMeterTest, oneArrivalIsNoGap)
{
    arriveAt(0s);
    EXPECT_EQ(longestAt(10s), 0.0);
}

TEST_F(GapMeterTest, tellsTheLongestWaitNotTheLast)
{
    arriveAt(0s);
    arriveAt(700ms);
    arriveAt(800ms);
    EXPECT_DOUBLE_EQ(longestAt(1s), 0.7);
}

TEST_F(GapMeterTest, aGapIsForgottenAfterAMinute)
{
    arriveAt(0s);
    arriveAt(2s);
    for (int second = 3; second <= 61; ++second)
        arriveAt(std::chrono::seconds(second));
    EXPECT_DOUBLE_EQ(longestAt(61s), 2.0);
    arriveAt(62s);
    EXPECT_DOUBLE_EQ(longestAt(62s), 1.0);
}

TEST_F(GapMeterTest, aGapOfOurOwnMakingDoesNotCount)
{
    arriveAt(0s);
    meter.interrupt();
    arriveAt(30s);
    EXPECT_EQ(longestAt(30s), 0.0);
}

}
