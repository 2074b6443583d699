// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/Reserve.h"
#include "live/session/TestSound.h"

#include <gtest/gtest.h>

namespace velarin::live {

using namespace test;

class ReserveTest : public testing::Test
{
protected:
    [[nodiscard]] QByteArray takeAll()
    {
        QByteArray all;
        for (QByteArray piece = reserve.take(); !piece.isEmpty(); piece = reserve.take())
            all += piece;
        return all;
    }

    Reserve reserve;
};

TEST_F(ReserveTest, givesBackEveryByteInOrder)
{
    const QByteArray sound = frames(0, 200);
    reserve.startStretch(SoundFormat::Mpeg, std::nullopt);
    for (qsizetype at = 0; at < sound.size(); at += 1000)
        reserve.add(QByteArrayView(sound).sliced(at, std::min<qsizetype>(1000, sound.size() - at)));
    EXPECT_EQ(reserve.bytes(), sound.size());
    EXPECT_EQ(takeAll(), sound);
    EXPECT_EQ(reserve.bytes(), 0);
    EXPECT_NEAR(reserve.seconds().count(), 0.0, 1e-6);
}

TEST_F(ReserveTest, knowsItsSecondsByTheFrames)
{
    reserve.startStretch(SoundFormat::Mpeg, std::nullopt);
    Seconds added{ 0.0 };
    for (int number = 0; number < 100; ++number)
        added += reserve.add(frame(number));
    EXPECT_NEAR(added.count(), 100 * frameSeconds, 2 * frameSeconds);
    EXPECT_NEAR(reserve.seconds().count(), added.count(), 1e-9);
}

TEST_F(ReserveTest, handsOutAboutAFifthOfASecond)
{
    reserve.startStretch(SoundFormat::Mpeg, std::nullopt);
    reserve.add(frames(0, 400));
    const qsizetype slice = reserve.take().size();
    EXPECT_GT(slice, 2500);
    EXPECT_LT(slice, 4000);
}

TEST_F(ReserveTest, aStretchWaitsUntilTheOneBeforeIsUsedUp)
{
    reserve.startStretch(SoundFormat::Mpeg, std::nullopt);
    const Seconds first = reserve.add(frames(0, 40));
    reserve.startStretch(SoundFormat::AacAdts, std::nullopt);
    EXPECT_FALSE(reserve.hasNextStretch());
    EXPECT_EQ(takeAll(), frames(0, 40));
    EXPECT_FALSE(reserve.hasNextStretch()) << "there is nothing in it";
    reserve.add("bytes");
    EXPECT_TRUE(reserve.hasNextStretch());
    reserve.leaveStretch();
    EXPECT_EQ(reserve.format(), SoundFormat::AacAdts);
    EXPECT_EQ(reserve.place(), first);
    EXPECT_EQ(takeAll(), QByteArray("bytes"));
}

TEST_F(ReserveTest, aStretchWithoutBytesLeavesNoTrace)
{
    reserve.startStretch(SoundFormat::Ogg, std::nullopt);
    reserve.startStretch(SoundFormat::Mpeg, std::nullopt);
    EXPECT_EQ(reserve.stretches(), 1U);
    EXPECT_EQ(reserve.format(), SoundFormat::Mpeg);
}

TEST_F(ReserveTest, anEmptiedStretchHoldsNothing)
{
    reserve.startStretch(SoundFormat::Mpeg, std::nullopt);
    reserve.add(frames(0, 40));
    reserve.emptyStretch();
    EXPECT_EQ(reserve.bytes(), 0);
    EXPECT_EQ(reserve.seconds(), Seconds(0.0));
    EXPECT_TRUE(reserve.take().isEmpty());
}

}
