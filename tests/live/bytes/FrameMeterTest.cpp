// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/FrameMeter.h"

#include "Pieces.h"
#include "live/FrameHeaders.h"
#include "support/ears/Programme.h"

#include <gtest/gtest.h>

namespace velarin::live {
namespace {

using test::Codec;
using test::cutAtRandom;
using test::Programme;
using test::randomBytes;

// Encoders put some silence before and after.
constexpr double padding = 0.12;

double secondsOf(SoundFormat format, const std::vector<QByteArray>& pieces)
{
    FrameMeter meter(format);
    double sum = 0.0;
    for (const QByteArray& piece : pieces)
        sum += meter.feed(piece);
    EXPECT_NEAR(sum, meter.seconds(), 1e-6);
    return sum;
}

struct MeterCase
{
    const char* name;
    Codec codec;
    int rate;
    SoundFormat format;
};

class MeteredCodecTest : public testing::TestWithParam<MeterCase>
{
protected:
    [[nodiscard]] static QByteArray sound(double from, double length)
    {
        return Programme{ GetParam().codec, GetParam().rate, from, length }.encoded();
    }
};

TEST_P(MeteredCodecTest, theSumIsTheLengthOfTheSound)
{
    const double length = 20.0;
    EXPECT_NEAR(secondsOf(GetParam().format, { sound(0, length) }), length, 0.01 * length + padding);
}

TEST_P(MeteredCodecTest, anyCutGivesTheSameSum)
{
    std::mt19937 random(2);
    const QByteArray bytes = sound(0, 5.0);
    const double whole = secondsOf(GetParam().format, { bytes });
    for (const int longest : { 1, 10, 1000, 60'000 })
        EXPECT_NEAR(secondsOf(GetParam().format, cutAtRandom(bytes, random, longest)), whole, 1e-6) << longest;
}

TEST_P(MeteredCodecTest, damageCostsWhatItDestroysAndLittleMore)
{
    const QByteArray before = sound(0, 10.0);
    QByteArray damaged = before;
    damaged.replace(damaged.size() / 2, 3000, randomBytes(2900, 4));
    const double lost = secondsOf(GetParam().format, { before }) - secondsOf(GetParam().format, { damaged });
    EXPECT_LT(std::abs(lost), 1.3);
}

TEST_P(MeteredCodecTest, aNewSongGoesOnWhereTheOldOneEnded)
{
    const double both = secondsOf(GetParam().format, { sound(0, 5.0), sound(5, 5.0) });
    EXPECT_NEAR(both, 10.0, 0.1 + 2 * padding);
}

INSTANTIATE_TEST_SUITE_P(Codecs, MeteredCodecTest,
    testing::Values(MeterCase{ "mp3", Codec::Mp3, 44100, SoundFormat::Mpeg },
        MeterCase{ "mp3Of48k", Codec::Mp3, 48000, SoundFormat::Mpeg },
        MeterCase{ "mpeg2Of22k", Codec::Mp3, 22050, SoundFormat::Mpeg },
        MeterCase{ "aac", Codec::AacAdts, 44100, SoundFormat::AacAdts },
        MeterCase{ "vorbis", Codec::OggVorbis, 44100, SoundFormat::Ogg },
        MeterCase{ "opus", Codec::OggOpus, 48000, SoundFormat::Ogg },
        MeterCase{ "oggFlac", Codec::OggFlac, 44100, SoundFormat::Ogg },
        MeterCase{ "flac", Codec::Flac, 44100, SoundFormat::Flac }),
    [](const auto& named) { return std::string(named.param.name); });

TEST(FrameMeterTest, aListenerWhoJoinsAnOggStreamInTheMiddleIsNotCreditedWithWhatWasBefore)
{
    const QByteArray bytes = Programme{ .codec = Codec::OggVorbis, .length = 30.0 }.encoded();
    const qsizetype firstData = bytes.indexOf("OggS", bytes.indexOf("OggS", 1) + 1);
    const qsizetype middle = bytes.indexOf("OggS", bytes.size() / 2);
    const double seconds = secondsOf(SoundFormat::Ogg, { bytes.first(firstData), bytes.sliced(middle) });
    EXPECT_NEAR(seconds, 15.0, 2.0);
}

TEST(FrameMeterTest, boundariesAreWhereFramesBegin)
{
    const QByteArray bytes = Programme{ .codec = Codec::Mp3, .length = 3.0 }.encoded();
    FrameMeter meter(SoundFormat::Mpeg);
    EXPECT_FALSE(meter.firstBoundary());
    const qsizetype cut = 5;
    meter.feed(bytes.sliced(cut, 10'000));
    ASSERT_TRUE(meter.firstBoundary());
    EXPECT_TRUE(mpegFrameHeader(bytes.sliced(cut + *meter.firstBoundary())));
    ASSERT_TRUE(meter.lastBoundary());
    EXPECT_TRUE(mpegFrameHeader(bytes.sliced(cut + *meter.lastBoundary())));
    EXPECT_LE(*meter.lastBoundary(), meter.position());
    EXPECT_GT(*meter.lastBoundary(), meter.position() - 1500);
}

TEST(FrameMeterTest, aChangeOfRateInsideIsFollowed)
{
    const QByteArray slow = Programme{ .codec = Codec::Mp3, .framesPerSecond = 22050, .length = 5.0 }.encoded();
    const QByteArray fast = Programme{ .codec = Codec::Mp3, .framesPerSecond = 48000, .length = 5.0 }.encoded();
    EXPECT_NEAR(secondsOf(SoundFormat::Mpeg, { slow, fast, slow }), 15.0, 0.15 + 3 * padding);
}

TEST(FrameMeterTest, otherFormatsAreCountedByTheirClaimedRate)
{
    FrameMeter meter(SoundFormat::Other, 64'000);
    EXPECT_DOUBLE_EQ(meter.feed(QByteArray(8000, 'x')), 1.0);
    EXPECT_DOUBLE_EQ(FrameMeter(SoundFormat::AacLoas).feed(QByteArray(16'000, 'x')), 1.0);
}

TEST(FrameMeterTest, framesThatNobodyFindsAreCountedByTheRateInTheEnd)
{
    FrameMeter meter(SoundFormat::Mpeg);
    EXPECT_DOUBLE_EQ(meter.feed(QByteArray(60'000, 'x')), 0.0);
    EXPECT_NEAR(meter.feed(QByteArray(20'000, 'x')), 5.0, 1e-9);
    EXPECT_NEAR(meter.feed(QByteArray(16'000, 'x')), 1.0, 1e-9);
}

TEST(FrameMeterTest, noiseIsHardlyEverSound)
{
    for (const SoundFormat format : { SoundFormat::AacAdts, SoundFormat::Ogg }) {
        FrameMeter meter(format);
        EXPECT_LT(meter.feed(randomBytes(60'000, 3)), 1.0);
    }
}

}
}
