// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gstreamer/output/VolumeRamp.h"

#include <gmock/gmock.h>

#include <cmath>
#include <vector>

namespace velarin::test {
namespace {

using testing::Each;
using testing::FloatEq;

constexpr int ramp = 100;

std::vector<float> applied(VolumeRamp& volume, float target, std::size_t frames)
{
    std::vector<float> samples(2 * frames, 1.0F);
    volume.apply(samples, target);
    return samples;
}

TEST(VolumeRampTest, theFirstSoundHasItsVolumeFromTheFirstSample)
{
    VolumeRamp volume(ramp);
    EXPECT_THAT(applied(volume, 0.3F, 10), Each(FloatEq(0.3F)));
}

TEST(VolumeRampTest, fullVolumeLeavesTheSoundAsItIs)
{
    VolumeRamp volume(ramp);
    EXPECT_THAT(applied(volume, 1.0F, 10), Each(1.0F));
}

TEST(VolumeRampTest, aChangeGoesInEvenSmallSteps)
{
    VolumeRamp volume(ramp);
    (void)applied(volume, 1.0F, 1);
    const std::vector<float> samples = applied(volume, 0.0F, 150);
    for (std::size_t index = 2; index < samples.size(); ++index)
        EXPECT_LE(std::abs(samples[index] - samples[index - 2]), 1.01F / ramp) << index;
    EXPECT_GT(samples[2 * 50], 0.4F);
    EXPECT_EQ(samples.back(), 0.0F);
}

TEST(VolumeRampTest, bothChannelsHaveTheSameVolume)
{
    VolumeRamp volume(ramp);
    (void)applied(volume, 1.0F, 1);
    const std::vector<float> samples = applied(volume, 0.5F, 80);
    for (std::size_t frame = 0; frame < samples.size(); frame += 2)
        EXPECT_EQ(samples[frame], samples[frame + 1]);
}

TEST(VolumeRampTest, aChangeGoesOnFromBufferToBuffer)
{
    VolumeRamp volume(ramp);
    (void)applied(volume, 0.0F, 1);
    const float last = applied(volume, 1.0F, 30).back();
    EXPECT_NEAR(applied(volume, 1.0F, 1).front(), last + 1.0F / ramp, 1e-6);
}

}
}
