// SPDX-License-Identifier: GPL-3.0-or-later
// Sound after sound: branches, songs, dry spells, pauses.
#include "SoundBench.h"

namespace velarin::test {
namespace {

using namespace std::chrono_literals;
using live::BranchId;

// What an encoder adds to and takes from the ends of a piece.
constexpr double codecEdge = 0.08;

struct Part
{
    Codec codec;
    int rate;
};

class BranchChangeTest : public SoundTest, public testing::WithParamInterface<std::pair<Part, Part>>
{
};

TEST_P(BranchChangeTest, leavesNoGap)
{
    const auto [first, second] = GetParam();
    const auto one = open(formatOf(first.codec));
    feeder.give(one, Programme{ .codec = first.codec, .framesPerSecond = first.rate, .length = 2.0 }.encoded(), true);
    const auto two = open(formatOf(second.codec));
    feeder.give(two,
        Programme{ .codec = second.codec, .framesPerSecond = second.rate, .from = 2.0, .length = 2.0 }.encoded(), true);
    pipeline->play();
    ASSERT_TRUE(untilDry());
    const EarReport report = heardSoFar();
    EXPECT_NEAR(report.heard, 4.0, 0.15);
    EXPECT_LE(report.longestGap, 0.05);
    EXPECT_LT(report.lost, codecEdge);
    EXPECT_LT(report.repeated, codecEdge);
    EXPECT_EQ(report.secondsHeard, (std::vector<int>{ 0, 1, 2, 3 }));
    EXPECT_EQ(feeder.finished, (std::vector<BranchId>{ one, two }));
    EXPECT_EQ(feeder.dry, 1);
}

INSTANTIATE_TEST_SUITE_P(Each, BranchChangeTest,
    testing::Values(std::pair(Part{ Codec::Mp3, 44100 }, Part{ Codec::Mp3, 48000 }),
        std::pair(Part{ Codec::Mp3, 44100 }, Part{ Codec::AacAdts, 44100 }),
        std::pair(Part{ Codec::AacAdts, 48000 }, Part{ Codec::OggVorbis, 44100 }),
        std::pair(Part{ Codec::OggOpus, 48000 }, Part{ Codec::Mp3, 22050 })));

class ContinuityTest : public SoundTest
{
protected:
    static QByteArray flac(double from, double length)
    {
        return Programme{ .codec = Codec::OggFlac, .from = from, .length = length }.encoded();
    }
    static QByteArray mp3(double length) { return Programme{ .length = length }.encoded(); }
};

TEST_F(ContinuityTest, aDrySpellLosesAndRepeatsNothing)
{
    const QByteArray sound = mp3(3.0);
    const auto branch = open(live::SoundFormat::Mpeg);
    feeder.give(branch, sound.left(sound.size() / 2));
    pipeline->play();
    ASSERT_TRUE(untilDry());
    const double toldAt = ear->now();
    loop.runFor(700ms);
    feeder.give(branch, sound.mid(sound.size() / 2), true);
    ASSERT_TRUE(untilDry(2));
    const EarReport report = heardSoFar();
    EXPECT_GT(report.longestGap, 0.6);
    EXPECT_LT(report.longestGap, 0.9);
    EXPECT_EQ(report.lost, 0.0);
    EXPECT_EQ(report.repeated, 0.0);
    EXPECT_NEAR(report.heard, 3.0, 0.1);
    EXPECT_NEAR(toldAt, *report.firstSound + 1.5, 0.1);
    EXPECT_EQ(feeder.heard, 2);
}

// A source that is always a little late: the device runs dry again and again, without being told anything.
TEST_F(ContinuityTest, manyShortDrySpellsLoseAndRepeatNothing)
{
    const QByteArray sound = mp3(3.0);
    const auto branch = open(live::SoundFormat::Mpeg);
    pipeline->play();
    constexpr int pieces = 12;
    for (int piece = 0; piece < pieces; ++piece) {
        feeder.give(branch, sound.mid(sound.size() / pieces * piece, sound.size() / pieces));
        loop.runFor(290ms);
    }
    feeder.give(branch, sound.mid(sound.size() / pieces * pieces), true);
    ASSERT_TRUE(until([this] { return feeder.dry > 0 && pipeline->heardSeconds() > 2.9; }));
    const EarReport report = heardSoFar();
    // The ear tells places apart to some 20 ms, and each of the twelve spells is a place to be wrong at.
    EXPECT_LE(report.lost, 0.03);
    EXPECT_LE(report.repeated, 0.03);
    EXPECT_NEAR(report.heard, 3.0, 0.15);
}

TEST_F(ContinuityTest, aPieceShorterThanTheDevicesBufferIsHeard)
{
    const auto branch = open(live::SoundFormat::Flac);
    feeder.give(branch, Programme{ .codec = Codec::Flac, .length = 0.1 }.encoded(), true);
    pipeline->play();
    ASSERT_TRUE(untilDry());
    EXPECT_NEAR(heardSoFar().heard, 0.1, 0.03);
    EXPECT_EQ(feeder.heard, 1);
}

TEST_F(ContinuityTest, aBranchAfterTheLastOneHasEndedIsHeard)
{
    const auto one = open(live::SoundFormat::Ogg);
    feeder.give(one, flac(0.0, 1.0), true);
    pipeline->play();
    ASSERT_TRUE(untilDry());
    const auto two = open(live::SoundFormat::Ogg);
    feeder.give(two, flac(1.0, 1.0), true);
    ASSERT_TRUE(untilDry(2));
    const EarReport report = heardSoFar();
    EXPECT_EQ(report.secondsHeard, (std::vector<int>{ 0, 1 }));
    EXPECT_NEAR(report.heard, 2.0, 0.05);
    EXPECT_EQ(report.lost, 0.0);
}

TEST_F(ContinuityTest, aBranchWithoutBytesIsPassedOver)
{
    const auto one = open(live::SoundFormat::Ogg);
    const auto empty = open(live::SoundFormat::Mpeg);
    const auto two = open(live::SoundFormat::Ogg);
    pipeline->endBranch(empty);
    feeder.give(one, flac(0.0, 1.0), true);
    feeder.give(two, flac(1.0, 1.0), true);
    pipeline->play();
    ASSERT_TRUE(untilDry());
    EXPECT_NEAR(heardSoFar().heard, 2.0, 0.05);
    EXPECT_EQ(feeder.finished.size(), 3U);
    EXPECT_TRUE(feeder.failures.empty());
}

TEST_F(ContinuityTest, aPauseIsSilentAtOnceAndKeepsEverything)
{
    const auto branch = open(live::SoundFormat::Mpeg);
    feeder.give(branch, mp3(3.0), true);
    pipeline->play();
    ASSERT_TRUE(until([this] { return pipeline->heardSeconds() > 1.0; }));
    pipeline->pause();
    const double pausedAt = ear->now();
    loop.runFor(200ms);
    const double heard = pipeline->heardSeconds();
    loop.runFor(500ms);
    EXPECT_EQ(pipeline->heardSeconds(), heard);
    const EarReport paused = ear->report();
    EXPECT_NEAR(*paused.lastSound, pausedAt, 0.08);
    EXPECT_EQ(feeder.dry, 0);
    pipeline->play();
    ASSERT_TRUE(untilDry());
    const EarReport report = heardSoFar();
    EXPECT_GT(report.longestGap, 0.6);
    EXPECT_EQ(report.lost, 0.0);
    EXPECT_EQ(report.repeated, 0.0);
    EXPECT_NEAR(report.heard, 3.0, 0.1);
    EXPECT_EQ(feeder.heard, 2);
}

TEST_F(ContinuityTest, songsOfAChainedOggFollowEachOtherWithTheirTitles)
{
    struct Song
    {
        Codec codec;
        const char* title;
        const char* artist;
    };
    const std::vector<Song> songs{ { Codec::OggVorbis, "Azzurro", "Adriano Celentano" },
        { Codec::OggVorbis, "Senza artista", "" }, { Codec::OggOpus, "Volare", "Domenico Modugno" },
        { Codec::OggFlac, "Caruso", "Lucio Dalla" } };
    QByteArray chain;
    for (std::size_t index = 0; index < songs.size(); ++index)
        chain += Programme{ .codec = songs[index].codec,
            .from = static_cast<double>(index),
            .length = 1.0,
            .title = songs[index].title,
            .artist = songs[index].artist }
                     .encoded();
    const auto branch = open(live::SoundFormat::Ogg);
    feeder.give(branch, chain, true);
    pipeline->play();
    ASSERT_TRUE(untilDry());
    const EarReport report = heardSoFar();
    EXPECT_NEAR(report.heard, 4.0, 0.15);
    EXPECT_LE(report.longestGap, 0.05);
    EXPECT_LT(report.lost, codecEdge);
    EXPECT_LT(report.repeated, codecEdge);
    ASSERT_EQ(feeder.titles.size(), 4U);
    EXPECT_EQ(feeder.titles[0].text, QStringLiteral("Adriano Celentano - Azzurro"));
    EXPECT_EQ(feeder.titles[1].text, QStringLiteral("Senza artista"));
    EXPECT_EQ(feeder.titles[2].text, QStringLiteral("Domenico Modugno - Volare"));
    EXPECT_EQ(feeder.titles[3].text, QStringLiteral("Lucio Dalla - Caruso"));
    for (std::size_t index = 0; index < feeder.titles.size(); ++index)
        EXPECT_NEAR(feeder.titles[index].seconds, static_cast<double>(index), 0.06) << index;
    EXPECT_EQ(feeder.finished, (std::vector<BranchId>{ branch }));
}

TEST_F(ContinuityTest, soundBeginsSoonAfterPlay)
{
    const auto branch = open(live::SoundFormat::Mpeg);
    feeder.give(branch, mp3(1.0), true);
    const double askedAt = ear->now();
    pipeline->play();
    ASSERT_TRUE(until([this] { return feeder.heard == 1; }));
    const double toldAt = ear->now();
    ASSERT_TRUE(untilDry());
    const EarReport report = heardSoFar();
    RecordProperty("millisecondsToSound", static_cast<int>((*report.firstSound - askedAt) * 1000));
    EXPECT_LT(*report.firstSound - askedAt, 0.15);
    EXPECT_NEAR(toldAt, *report.firstSound, 0.08);
}

TEST_F(ContinuityTest, aNewPipelineSoundsSoonAfterItsFirstBytes)
{
    const QByteArray sound = mp3(1.0);
    live::GstSoundPipelineFactory factory(loop, selection);
    const double askedAt = ear->now();
    pipeline = factory.make(feeder);
    feeder.attach(*pipeline);
    const auto branch = open(live::SoundFormat::Mpeg);
    pipeline->play();
    feeder.give(branch, sound, true);
    ASSERT_TRUE(untilDry());
    const EarReport report = heardSoFar();
    RecordProperty("millisecondsToSound", static_cast<int>((*report.firstSound - askedAt) * 1000));
    EXPECT_LT(*report.firstSound - askedAt, 0.2);
}

TEST_F(ContinuityTest, theDeviceHoldsLessThanAQuarterOfASecond)
{
    const auto branch = open(live::SoundFormat::Mpeg);
    feeder.give(branch, mp3(3.0), true);
    pipeline->play();
    ASSERT_TRUE(until([this] { return pipeline->heardSeconds() > 1.0; }));
    EXPECT_LT(pipeline->decodedSeconds() - pipeline->heardSeconds(), 0.3);
    EXPECT_GT(pipeline->decodedSeconds() - pipeline->heardSeconds(), 0.1);
    const EarReport report = ear->report();
    EXPECT_NEAR(pipeline->heardSeconds(), report.heard, 0.05);
}

}
}
