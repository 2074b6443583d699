// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/ReconnectPolicy.h"

#include <gmock/gmock.h>

namespace velarin {

using namespace std::chrono_literals;

TEST(ReconnectPolicy, retriesComeAfterOneTwoThreeAndFiveSeconds)
{
    EXPECT_EQ(ReconnectPolicy::retryDelay(1, true), 1s);
    EXPECT_EQ(ReconnectPolicy::retryDelay(2, true), 2s);
    EXPECT_EQ(ReconnectPolicy::retryDelay(3, true), 3s);
    EXPECT_EQ(ReconnectPolicy::retryDelay(4, true), 5s);
}

TEST(ReconnectPolicy, thereIsNoRetryOutsideARun)
{
    EXPECT_EQ(ReconnectPolicy::retryDelay(0, true), std::nullopt);
    EXPECT_EQ(ReconnectPolicy::retryDelay(5, true), std::nullopt);
    EXPECT_EQ(ReconnectPolicy::retryDelay(-1, true), std::nullopt);
}

TEST(ReconnectPolicy, patienceGrowsToTwoMinutesAndStaysThere)
{
    EXPECT_EQ(ReconnectPolicy::patientDelay(1, true), 15s);
    EXPECT_EQ(ReconnectPolicy::patientDelay(2, true), 30s);
    EXPECT_EQ(ReconnectPolicy::patientDelay(3, true), 60s);
    EXPECT_EQ(ReconnectPolicy::patientDelay(4, true), 120s);
    EXPECT_EQ(ReconnectPolicy::patientDelay(5, true), 120s);
    EXPECT_EQ(ReconnectPolicy::patientDelay(1'000'000, true), 120s);
}

TEST(ReconnectPolicy, anyNumberBelowOneCountsAsTheFirstGiveUp)
{
    EXPECT_EQ(ReconnectPolicy::patientDelay(0, true), 15s);
    EXPECT_EQ(ReconnectPolicy::patientDelay(-7, true), 15s);
}

TEST(ReconnectPolicy, nothingIsRetriedWhereTheUserDoesNotWantIt)
{
    EXPECT_EQ(ReconnectPolicy::retryDelay(1, false), std::nullopt);
    EXPECT_EQ(ReconnectPolicy::patientDelay(1, false), std::nullopt);
    EXPECT_EQ(ReconnectPolicy::maxAttempts(false), 1);
    EXPECT_EQ(ReconnectPolicy::maxAttempts(true), 5);
}

}
