// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/MprisTime.h"

#include <gtest/gtest.h>

#include <limits>

namespace velarin::test {

namespace {

using namespace std::chrono_literals;
using Way = SeekPlan::Way;

}

TEST(MprisTimeTest, aPlaceRunsOnWithItsRateAndStaysWithinTheItem)
{
    const MprisTime time{ .elapsed = 10.0, .duration = 20.0, .rate = 2.0, .publishedAt = 5s };
    EXPECT_EQ(time.at(5s), 10.0);
    EXPECT_EQ(time.at(8s), 16.0);
    EXPECT_EQ(time.at(60s), 20.0);
}

TEST(MprisTimeTest, aPlaceStandsStillWithoutARate)
{
    const MprisTime time{ .elapsed = 10.0, .duration = {}, .rate = 0.0, .publishedAt = 5s };
    EXPECT_EQ(time.at(60s), 10.0);
}

TEST(MprisTimeTest, aLiveStreamHasNoPlace)
{
    const MprisTime time{ .elapsed = {}, .duration = {}, .rate = 1.0, .publishedAt = 0s };
    EXPECT_EQ(time.at(60s), std::nullopt);
}

TEST(MprisTimeTest, numbersThatDoNotFitAreBounded)
{
    EXPECT_EQ(microsecondsOf(1.5), 1'500'000);
    EXPECT_EQ(microsecondsOf(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(microsecondsOf(std::numeric_limits<double>::infinity()), microsecondsOf(1e300));
    EXPECT_LT(microsecondsOf(-1e300), 0);
    EXPECT_EQ(secondsOf(-2'500'000), -2.5);
}

TEST(MprisTimeTest, aJumpIsASecondOrMoreFromWhatIsShown)
{
    EXPECT_FALSE(isJump(10.0, 10.9));
    EXPECT_FALSE(isJump(10.0, 9.1));
    EXPECT_TRUE(isJump(10.0, 11.0));
    EXPECT_TRUE(isJump(10.0, 0.0));
    EXPECT_TRUE(isJump(std::nullopt, 30.0)) << "a new item that does not begin at its start";
    EXPECT_FALSE(isJump(std::nullopt, 0.0));
    EXPECT_FALSE(isJump(10.0, std::nullopt)) << "a live stream";
}

TEST(MprisTimeTest, aRelativeSeekGoesToWhoKnowsThePlace)
{
    struct Row
    {
        SeekFacts facts;
        SeekPlan plan;
    };
    const Row rows[] = {
        { { .offset = 30, .canSkip = true, .canMove = true, .shown = 10, .duration = 100 }, { Way::Skip, 30 } },
        { { .offset = 30, .canSkip = false, .canMove = true, .shown = 10, .duration = 100 }, { Way::Move, 40 } },
        { { .offset = -30, .canSkip = false, .canMove = true, .shown = 10, .duration = 100 }, { Way::Move, 0 } },
        { { .offset = 91, .canSkip = false, .canMove = true, .shown = 10, .duration = 100 }, { Way::Next, 0 } },
        { { .offset = 91, .canSkip = false, .canMove = true, .shown = 10, .duration = {} }, { Way::Move, 101 } },
        { { .offset = 30, .canSkip = false, .canMove = true, .shown = {}, .duration = {} }, { Way::Skip, 30 } },
        { { .offset = 30, .canSkip = false, .canMove = false, .shown = 10, .duration = 100 }, { Way::Skip, 30 } },
    };
    for (const Row& row : rows)
        EXPECT_EQ(planSeek(row.facts), row.plan) << "row " << &row - rows;
}

TEST(MprisTimeTest, aPlaceIsWithinFromTheStartToTheEnd)
{
    EXPECT_TRUE(isWithin(0.0, 10.0));
    EXPECT_TRUE(isWithin(10.0, 10.0));
    EXPECT_FALSE(isWithin(10.1, 10.0));
    EXPECT_FALSE(isWithin(-0.1, 10.0));
    EXPECT_TRUE(isWithin(1e6, std::nullopt)) << "without a known end every place is";
}

}
