// SPDX-License-Identifier: GPL-3.0-or-later
// Who judges by ear must know how good the ear is.
#include "support/ears/EarReport.h"
#include "support/ears/Programme.h"

#include <gtest/gtest.h>

#include <cmath>

namespace velarin::test {
namespace {

constexpr int rate = 44100;

std::vector<float> programme(double from, double length)
{
    return Programme{ .framesPerSecond = rate, .from = from, .length = length }.samples();
}

void operator+=(std::vector<float>& sound, const std::vector<float>& more)
{
    sound.insert(sound.end(), more.begin(), more.end());
}

std::vector<float> silence(double seconds)
{
    return std::vector<float>(static_cast<std::size_t>(seconds * rate));
}

TEST(EarReportTest, aWholeProgrammeHasNoFault)
{
    std::vector<float> sound = silence(0.5);
    sound += programme(0.0, 5.0);
    const EarReport report = judge(sound, rate);
    EXPECT_NEAR(*report.firstSound, 0.5, 0.011);
    EXPECT_NEAR(report.heard, 5.0, 0.03);
    EXPECT_LT(report.longestGap, 0.011);
    EXPECT_EQ(report.lost, 0.0);
    EXPECT_EQ(report.repeated, 0.0);
    EXPECT_EQ(report.secondsHeard, (std::vector<int>{ 0, 1, 2, 3, 4 }));
}

TEST(EarReportTest, silenceAloneHasNoSound)
{
    const EarReport report = judge(silence(2.0), rate);
    EXPECT_EQ(report.firstSound, std::nullopt);
    EXPECT_EQ(report.heard, 0.0);
    EXPECT_EQ(report.longestSilence, 0.0);
}

TEST(EarReportTest, silenceAtTheEndIsSilenceButNoGap)
{
    std::vector<float> sound = programme(0.0, 1.0);
    sound += silence(1.5);
    const EarReport report = judge(sound, rate);
    EXPECT_NEAR(report.longestSilence, 1.5, 0.02);
    EXPECT_LT(report.longestGap, 0.011);
}

class HoleTest : public testing::TestWithParam<double>
{
};

TEST_P(HoleTest, isMeasuredAsLoss)
{
    std::vector<float> sound = programme(0.0, 2.013);
    sound += programme(2.013 + GetParam(), 2.0);
    const EarReport report = judge(sound, rate);
    EXPECT_NEAR(report.lost, GetParam(), 0.02);
    EXPECT_EQ(report.repeated, 0.0);
    ASSERT_EQ(report.jumps.size(), 1U);
    EXPECT_NEAR(report.jumps.front().at, 2.0, 0.2);
}

TEST_P(HoleTest, theOtherWayIsMeasuredAsRepetition)
{
    std::vector<float> sound = programme(1.0, 2.013);
    sound += programme(3.013 - GetParam(), 2.0);
    const EarReport report = judge(sound, rate);
    EXPECT_NEAR(report.repeated, GetParam(), 0.02);
    EXPECT_EQ(report.lost, 0.0);
}

TEST_P(HoleTest, ofSilenceIsAGapAndNoLoss)
{
    std::vector<float> sound = programme(0.0, 2.013);
    sound += silence(GetParam());
    sound += programme(2.013, 2.0);
    const EarReport report = judge(sound, rate);
    EXPECT_NEAR(report.longestGap, GetParam(), 0.02);
    EXPECT_EQ(report.lost, 0.0);
    EXPECT_EQ(report.repeated, 0.0);
}

INSTANTIATE_TEST_SUITE_P(Each, HoleTest, testing::Values(0.06, 0.1, 0.35, 1.0));

TEST(EarReportTest, aStepOfASampleIsSeen)
{
    std::vector<float> sound(rate, 0.1F);
    sound[1000] = 0.9F;
    EXPECT_NEAR(judge(sound, rate).steepest, 0.8, 1e-3);
}

}
}
