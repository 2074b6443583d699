// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gstreamer/output/SoundHistory.h"

#include <gtest/gtest.h>

namespace velarin::test {
namespace {

// Frames numbered from `first`; both channels carry the number.
std::vector<float> frames(int first, int count)
{
    std::vector<float> samples;
    for (int frame = first; frame < first + count; ++frame)
        samples.insert(samples.end(), 2, static_cast<float>(frame));
    return samples;
}

TEST(SoundHistoryTest, givesBackWhatCameAfterAFrame)
{
    SoundHistory history(100);
    history.append(frames(0, 30));
    EXPECT_EQ(history.from(20), frames(20, 10));
    EXPECT_EQ(history.end(), 30);
}

TEST(SoundHistoryTest, hasNothingAfterTheEnd)
{
    SoundHistory history(100);
    history.append(frames(0, 30));
    EXPECT_TRUE(history.from(30).empty());
    EXPECT_TRUE(history.from(40).empty());
}

TEST(SoundHistoryTest, keepsTheOrderAcrossTheWrapOfItsRing)
{
    SoundHistory history(50);
    for (int first = 0; first < 210; first += 7)
        history.append(frames(first, 7));
    EXPECT_EQ(history.from(170), frames(170, 40));
}

TEST(SoundHistoryTest, goesBackAsFarAsItKeeps)
{
    SoundHistory history(50);
    history.append(frames(0, 120));
    EXPECT_EQ(history.from(0), frames(70, 50));
}

}
}
