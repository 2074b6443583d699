// SPDX-License-Identifier: GPL-3.0-or-later
// Bytes that are no sound, or no longer.
#include "SoundBench.h"

#include <QFile>

#include <random>

namespace velarin::test {
namespace {

using namespace std::chrono_literals;

QByteArray noise(qsizetype size)
{
    std::mt19937 random(7);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

class FaultTest : public SoundTest
{
protected:
    void expectSoundFrom(Codec codec)
    {
        const double before = heardSoFar().heard;
        const auto branch = open(formatOf(codec));
        feeder.give(branch, Programme{ .codec = codec, .length = 1.0 }.encoded(), true);
        pipeline->play();
        ASSERT_TRUE(untilDry(feeder.dry + 1));
        EXPECT_NEAR(heardSoFar().heard - before, 1.0, 0.15);
    }
};

class NoSoundTest : public FaultTest, public testing::WithParamInterface<live::SoundFormat>
{
};

TEST_P(NoSoundTest, endsTheBranchAndNotThePipeline)
{
    const auto branch = open(GetParam());
    feeder.give(branch, noise(2 * 1024 * 1024));
    pipeline->play();
    ASSERT_TRUE(until([&] { return feeder.failures.count(branch) > 0; }));
    const AudioError cause = feeder.failures[branch].front();
    EXPECT_TRUE(cause.domain == AudioErrorDomain::gstStream || cause.domain == AudioErrorDomain::gstCore)
        << cause.domain.toStdString();
    EXPECT_FALSE(cause.text.isEmpty());
    expectSoundFrom(Codec::Mp3);
    EXPECT_EQ(feeder.failures.size(), 1U);
}

TEST_P(NoSoundTest, thatEndsEarlyIsAFailureToo)
{
    const auto branch = open(GetParam());
    feeder.give(branch, noise(1500), true);
    pipeline->play();
    ASSERT_TRUE(until([&] { return feeder.failures.count(branch) > 0; }));
    EXPECT_TRUE(feeder.finished.empty());
    expectSoundFrom(Codec::OggVorbis);
}

INSTANTIATE_TEST_SUITE_P(Each, NoSoundTest,
    testing::Values(live::SoundFormat::Mpeg, live::SoundFormat::AacAdts, live::SoundFormat::AacLoas,
        live::SoundFormat::Ogg, live::SoundFormat::Flac, live::SoundFormat::MpegTs, live::SoundFormat::Mp4,
        live::SoundFormat::Other));

class DamageTest : public FaultTest, public testing::WithParamInterface<Codec>
{
};

// The middle fifth is noise. What comes after it is heard, in this branch or the next.
TEST_P(DamageTest, inTheMiddleEndsNeitherSoundNorPipeline)
{
    QByteArray sound = Programme{ .codec = GetParam(), .length = 3.0 }.encoded();
    const qsizetype fifth = sound.size() / 5;
    sound.replace(2 * fifth, fifth, noise(fifth));
    const auto branch = open(formatOf(GetParam()));
    feeder.give(branch, sound, true);
    pipeline->play();
    ASSERT_TRUE(until([&] { return !feeder.finished.empty() || !feeder.failures.empty(); }));
    ASSERT_TRUE(untilDry());
    if (feeder.failures.empty()) {
        EXPECT_GT(heardSoFar().heard, 2.0);
    }
    expectSoundFrom(Codec::AacAdts);
}

INSTANTIATE_TEST_SUITE_P(Each, DamageTest,
    testing::Values(Codec::Mp3, Codec::AacAdts, Codec::OggVorbis, Codec::OggOpus, Codec::OggFlac, Codec::Flac));

TEST_F(FaultTest, aPausedPipelineLosesAFailedBranchWithoutHanging)
{
    const auto good = open(live::SoundFormat::Mpeg);
    feeder.give(good, Programme{ .length = 2.0 }.encoded());
    const auto bad = open(live::SoundFormat::Mpeg);
    loop.runFor(200ms);
    pipeline->push(bad, noise(300 * 1024));
    ASSERT_TRUE(until([&] { return feeder.failures.count(bad) > 0; }));
    feeder.give(good, {}, true);
    pipeline->play();
    ASSERT_TRUE(untilDry());
    EXPECT_NEAR(heardSoFar().heard, 2.0, 0.1);
}

TEST_F(FaultTest, aBranchThatFailsBetweenTwoOthersHoldsNothingUp)
{
    const auto first = open(live::SoundFormat::Mpeg);
    const auto bad = open(live::SoundFormat::Flac);
    const auto last = open(live::SoundFormat::Mpeg);
    feeder.give(first, Programme{ .length = 1.0 }.encoded(), true);
    feeder.give(bad, Programme{ .codec = Codec::Flac, .length = 1.0 }.encoded().left(100) + noise(3000), true);
    feeder.give(last, Programme{ .from = 1.0, .length = 1.0 }.encoded(), true);
    pipeline->play();
    ASSERT_TRUE(until([this] { return feeder.finished.size() == 2; }));
    ASSERT_TRUE(untilDry());
    EXPECT_EQ(feeder.failures.count(bad), 1U);
    const EarReport report = heardSoFar();
    EXPECT_EQ(report.secondsHeard, (std::vector<int>{ 0, 1 }));
}

TEST_F(FaultTest, soundThatNobodyNamedIsFound)
{
    const auto branch = open(live::SoundFormat::Other);
    feeder.give(branch, Programme{ .codec = Codec::OggVorbis, .length = 2.0 }.encoded(), true);
    pipeline->play();
    ASSERT_TRUE(untilDry());
    EXPECT_NEAR(heardSoFar().heard, 2.0, 0.15);
}

TEST_F(FaultTest, aCapturedHighEfficiencyStreamIsHeard)
{
    QFile file(QStringLiteral(VELARIN_CORPORA "/icy/stream_metaint16000_aac_head.raw"));
    if (!file.open(QIODevice::ReadOnly))
        GTEST_SKIP() << "needs the captured streams (VELARIN_CORPORA)";
    QByteArray sound;
    constexpr qsizetype interval = 16000;
    while (!file.atEnd()) {
        sound += file.read(interval);
        const QByteArray length = file.read(1);
        if (!length.isEmpty())
            file.skip(16 * static_cast<unsigned char>(length.front()));
    }
    const auto branch = open(live::SoundFormat::AacAdts);
    feeder.give(branch, sound, true);
    pipeline->play();
    ASSERT_TRUE(untilDry());
    const EarReport report = heardSoFar();
    EXPECT_GT(report.heard, 3.0);
    EXPECT_NEAR(report.heard, pipeline->decodedSeconds(), 0.5);
    EXPECT_TRUE(feeder.failures.empty());
}

}
}
