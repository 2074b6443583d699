// SPDX-License-Identifier: GPL-3.0-or-later
#include "RadioWorld.h"

namespace velarin::test {

namespace {

struct Rung
{
    qint64 tier;
    QString label;
    qint64 peakBitRate;
    double forwardBuffer;
};

class StreamQualityTest : public testing::TestWithParam<Rung>
{
};

}

TEST_P(StreamQualityTest, hasItsLabelAndItsWishes)
{
    const StreamQuality quality{ GetParam().tier };
    EXPECT_EQ(quality.label(), GetParam().label);
    EXPECT_EQ(quality.preferredPeakBitRate(), GetParam().peakBitRate);
    EXPECT_EQ(quality.preferredForwardBufferDuration(), GetParam().forwardBuffer);
}

INSTANTIATE_TEST_SUITE_P(Tiers, StreamQualityTest,
    testing::Values(Rung{ 0, u"qualità piena"_s, 0, 0.0 }, Rung{ 1, u"qualità alta"_s, 128'000, 12.0 },
        Rung{ 2, u"qualità media"_s, 80'000, 24.0 }, Rung{ 3, u"qualità minima"_s, 48'000, 36.0 },
        Rung{ 4, u"qualità minima"_s, 48'000, 36.0 }, Rung{ 1'000'000, u"qualità minima"_s, 48'000, 36.0 }));

TEST(StreamQualityStart, isFullQuality)
{
    EXPECT_EQ(StreamQuality{}.tier, 0);
    EXPECT_EQ(StreamQuality{}, StreamQuality{ 0 });
}

}
