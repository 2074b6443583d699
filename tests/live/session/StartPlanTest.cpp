// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/StartPlan.h"

#include <gtest/gtest.h>

namespace velarin::live {

struct TierRow
{
    double forwardBuffer;
    double start;
    double goOn;
    double stopReading;
};

class StartPlanTest : public testing::TestWithParam<TierRow>
{
};

TEST_P(StartPlanTest, aTierSetsTheSoundToStartToGoOnAndToStopReading)
{
    const Seconds forwardBuffer(GetParam().forwardBuffer);
    EXPECT_EQ(soundToStart(forwardBuffer), Seconds(GetParam().start));
    EXPECT_EQ(soundToGoOn(forwardBuffer), Seconds(GetParam().goOn));
    EXPECT_EQ(soundToStopReading(forwardBuffer), Seconds(GetParam().stopReading));
}

INSTANTIATE_TEST_SUITE_P(Tiers, StartPlanTest,
    testing::Values(TierRow{ 0.0, 0.3, 1.0, 60.0 }, TierRow{ 12.0, 1.0, 1.0, 60.0 }, TierRow{ 24.0, 2.0, 2.0, 60.0 },
        TierRow{ 36.0, 3.0, 3.0, 60.0 }, TierRow{ 120.0, 3.0, 3.0, 120.0 }, TierRow{ -1.0, 0.3, 1.0, 60.0 }));

}
