// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/Watchdogs.h"

#include "RadioWorld.h"

#include <limits>

namespace velarin::test {

TEST(Watchdogs, theTimeForAnAnswerIsBetweenFiveAndTwelveSeconds)
{
    EXPECT_EQ(Watchdogs::answerSeconds(3), 5s);
    EXPECT_EQ(Watchdogs::answerSeconds(5), 5s);
    EXPECT_EQ(Watchdogs::answerSeconds(8), 8s);
    EXPECT_EQ(Watchdogs::answerSeconds(12), 12s);
    EXPECT_EQ(Watchdogs::answerSeconds(30), 12s);
    EXPECT_EQ(Watchdogs::answerSeconds(std::numeric_limits<qint64>::min()), 5s);
}

TEST(Watchdogs, aLowerQualityGetsTheTimeToFillItsReserve)
{
    EXPECT_EQ(Watchdogs::answerTimeout(8, StreamQuality{ 0 }), 8s);
    EXPECT_EQ(Watchdogs::answerTimeout(8, StreamQuality{ 1 }), 20s);
    EXPECT_EQ(Watchdogs::answerTimeout(8, StreamQuality{ 2 }), 32s);
    EXPECT_EQ(Watchdogs::answerTimeout(5, StreamQuality{ 0 }), 5s);
    EXPECT_EQ(Watchdogs::answerTimeout(12, StreamQuality{ 3 }), 48s);
}

TEST(Watchdogs, onlyAClockThatHasAllButStoppedIsSilent)
{
    EXPECT_TRUE(Watchdogs::hasStoppedSilently(TimeControl::Playing, 0.0));
    EXPECT_TRUE(Watchdogs::hasStoppedSilently(TimeControl::Playing, 0.49));
    EXPECT_FALSE(Watchdogs::hasStoppedSilently(TimeControl::Playing, 0.5));
    EXPECT_FALSE(Watchdogs::hasStoppedSilently(TimeControl::Playing, 5.0));
    EXPECT_TRUE(Watchdogs::hasStoppedSilently(TimeControl::Playing, -3.0));
}

TEST(Watchdogs, aPausedPlayerIsSilentWhateverItsClockSays)
{
    EXPECT_TRUE(Watchdogs::hasStoppedSilently(TimeControl::Paused, 5.0));
    EXPECT_FALSE(Watchdogs::hasStoppedSilently(TimeControl::Waiting, 5.0));
}

TEST(Watchdogs, aClockThatNobodyKnowsIsSilent)
{
    EXPECT_TRUE(Watchdogs::hasStoppedSilently(TimeControl::Playing, std::numeric_limits<double>::quiet_NaN()));
    EXPECT_TRUE(Watchdogs::hasStoppedSilently(TimeControl::Playing, std::numeric_limits<double>::infinity()));
}

}
