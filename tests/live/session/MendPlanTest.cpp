// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/MendPlan.h"

#include <gtest/gtest.h>

namespace velarin::live {

TEST(MendPlanTest, tenSecondsOfSoundEarnAMend)
{
    EXPECT_FALSE(earnsMend(Seconds(0.0)));
    EXPECT_FALSE(earnsMend(Seconds(9.99)));
    EXPECT_TRUE(earnsMend(Seconds(10.0)));
    EXPECT_TRUE(earnsMend(Seconds(3600.0)));
}

TEST(MendPlanTest, silenceIsHalfOfTheReserveWithinOneAndThreeSeconds)
{
    EXPECT_EQ(silenceThreshold(Seconds(0.0), Seconds(0.0)), Seconds(1.0));
    EXPECT_EQ(silenceThreshold(Seconds(1.9), Seconds(0.0)), Seconds(1.0));
    EXPECT_EQ(silenceThreshold(Seconds(4.0), Seconds(0.0)), Seconds(2.0));
    EXPECT_EQ(silenceThreshold(Seconds(6.0), Seconds(0.0)), Seconds(3.0));
    EXPECT_EQ(silenceThreshold(Seconds(60.0), Seconds(0.0)), Seconds(3.0));
}

TEST(MendPlanTest, aServerThatSendsInGulpsIsGivenThreeGulps)
{
    EXPECT_EQ(silenceThreshold(Seconds(4.0), Seconds(0.5)), Seconds(2.0));
    EXPECT_EQ(silenceThreshold(Seconds(4.0), Seconds(2.0)), Seconds(6.0));
}

TEST(MendPlanTest, theFirstAskComesAtOnce)
{
    EXPECT_EQ(planAsk({ .asked = 0, .sinceLastAsk = Seconds(0.0), .unanswered = {} }).wait, Seconds(0.0));
}

TEST(MendPlanTest, theNextAsksComeEveryHalfSecondAndThenEverySecond)
{
    for (int asked = 1; asked <= 4; ++asked)
        EXPECT_EQ(planAsk({ .asked = asked, .sinceLastAsk = Seconds(0.0), .unanswered = {} }).wait, Seconds(0.5));
    for (const int asked : { 5, 6, 100 })
        EXPECT_EQ(planAsk({ .asked = asked, .sinceLastAsk = Seconds(0.0), .unanswered = {} }).wait, Seconds(1.0));
}

TEST(MendPlanTest, timeSinceTheLastAskCounts)
{
    EXPECT_EQ(planAsk({ .asked = 2, .sinceLastAsk = Seconds(0.2), .unanswered = {} }).wait, Seconds(0.3));
    EXPECT_EQ(planAsk({ .asked = 2, .sinceLastAsk = Seconds(7.0), .unanswered = {} }).wait, Seconds(0.0));
}

TEST(MendPlanTest, anUnansweredAskGetsCompanyAfterTwoSeconds)
{
    const AskFacts young{ .asked = 1, .sinceLastAsk = Seconds(0.5), .unanswered = { Seconds(0.5) } };
    EXPECT_EQ(planAsk(young), (AskPlan{ .wait = Seconds(1.5), .replaceYoungest = false }));
    const AskFacts old{ .asked = 1, .sinceLastAsk = Seconds(2.0), .unanswered = { Seconds(2.0) } };
    EXPECT_EQ(planAsk(old), (AskPlan{ .wait = Seconds(0.0), .replaceYoungest = false }));
}

TEST(MendPlanTest, neverMoreThanTwoAsksAreUnderWayAndTheOldestIsKept)
{
    const AskFacts two{ .asked = 2, .sinceLastAsk = Seconds(2.0), .unanswered = { Seconds(4.0), Seconds(2.0) } };
    EXPECT_EQ(planAsk(two), (AskPlan{ .wait = Seconds(0.0), .replaceYoungest = true }));
}

TEST(MendPlanTest, theSearchForTheOverlapLastsAsLongAsTheSoundInHandAllows)
{
    EXPECT_EQ(searchTime(Seconds(4.0), Seconds(1.0)), Seconds(1.0));
    EXPECT_EQ(searchTime(Seconds(1.0), Seconds(1.0)), Seconds(0.5));
    EXPECT_EQ(searchTime(Seconds(0.0), Seconds(1.0)), Seconds(0.25));
}

}
