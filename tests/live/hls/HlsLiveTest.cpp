// SPDX-License-Identifier: GPL-3.0-or-later
// A station of segments that is well, and lists that are not.
#include "live/hls/HlsStationFixture.h"

namespace velarin::live::test {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

const QString list = QStringLiteral("/a/list");
const QString master = QStringLiteral("/master");
const QString stalled = QStringLiteral("stalled");

class HlsLiveTest : public HlsStationTest
{
};

}

TEST_F(HlsLiveTest, soundsAtOnceAndNearTheLiveEdge)
{
    listen(list, 300ms);
    EXPECT_THAT(events, Contains(QStringLiteral("playing")));
    advance(10s);
    const int edge = static_cast<int>(FakeHlsStation::past / FakeHlsStation::segmentSeconds);
    EXPECT_EQ(segmentsPlayed().front(), edge - 4);
}

TEST_F(HlsLiveTest, anHourIsHeardWithoutSilenceAndWithoutRepetition)
{
    listen(list, 1h);
    EXPECT_TRUE(isPlayedWithoutABreak());
    EXPECT_GE(heard(), 3599.0);
    EXPECT_EQ(stretches(), 1U);
    EXPECT_THAT(events, Not(Contains(stalled)));
}

TEST_F(HlsLiveTest, anHourAsksForEachSegmentOnceAndForTheListOncePerSegment)
{
    listen(list, 1h);
    const auto segments = static_cast<int>(3600.0 / FakeHlsStation::segmentSeconds);
    EXPECT_LE(station.asked(list), segments * 11 / 10);
    const std::set<QString> different(station.requests.begin(), station.requests.end());
    EXPECT_EQ(station.requests.size() - static_cast<std::size_t>(station.asked(list)), different.size() - 1);
}

TEST_F(HlsLiveTest, aShortListIsBegunAtItsBeginning)
{
    station.window = 2;
    listen(list, 60s);
    EXPECT_TRUE(isPlayedWithoutABreak());
    EXPECT_THAT(events, Not(Contains(stalled)));
}

TEST_F(HlsLiveTest, aListThatStandsStillForThreeSegmentsIsNotHeard)
{
    station.stuckFrom = 30.0;
    station.stuckUntil = 30.0 + 3 * FakeHlsStation::segmentSeconds;
    listen(list, 90s);
    EXPECT_TRUE(isPlayedWithoutABreak());
    EXPECT_THAT(events, Not(Contains(stalled)));
}

TEST_F(HlsLiveTest, aListThatStandsStillFor15SecondsCostsLittleAndIsToldOnce)
{
    station.stuckFrom = 30.0;
    station.stuckUntil = 45.0;
    listen(list, 90s);
    EXPECT_TRUE(isPlayedWithoutABreak());
    EXPECT_GE(heard(), 90.0 - 3.5);
    EXPECT_LE(events.count(stalled), 1);
}

TEST_F(HlsLiveTest, aListThatStandsStillForGoodIsAskedForAtGrowingStepsAndToldOnce)
{
    station.stuckFrom = 30.0;
    listen(list, 150s);
    EXPECT_EQ(events.count(stalled), 1);
    EXPECT_THAT(events, Not(Contains(QStringLiteral("ended"))));
    // A target duration apart in the end.
    EXPECT_LE(station.asked(list), 8 + 12 + 120 / 4);
    EXPECT_GE(station.asked(list), 8 + 120 / 5);
}

TEST_F(HlsLiveTest, aListThatComesBackLateIsHeardAgainAtItsEdge)
{
    station.stuckFrom = 30.0;
    station.stuckUntil = 120.0;
    listen(list, 160s);
    EXPECT_EQ(events.count(stalled), 1);
    EXPECT_EQ(events.back(), QStringLiteral("playing"));
}

TEST_F(HlsLiveTest, aRestartedNumberingIsFollowedByTheAddresses)
{
    station.numbering = [this](int segment) -> qint64 { return station.now() < 30.0 ? segment : segment - 30; };
    listen(list, 90s);
    EXPECT_TRUE(isPlayedWithoutABreak());
    EXPECT_EQ(stretches(), 1U);
    EXPECT_THAT(events, Not(Contains(stalled)));
}

TEST_F(HlsLiveTest, aRestartedStationIsHeardFromItsNewBeginning)
{
    // New addresses, numbers from 0 on, and one segment more every time.
    station.script = [this](const QString& path, const StreamRequest&) -> std::optional<FakeHlsStation::Reply> {
        if (path != list || station.now() < 30.0)
            return std::nullopt;
        return FakeHlsStation::Reply{ .body =
                                          station.list(1000, 1000 + (station.complete() - 30), QStringLiteral("b")) };
    };
    station.numbering = [this](int segment) -> qint64 { return segment >= 1000 ? segment - 1000 : segment; };
    listen(list, 70s);
    EXPECT_THAT(segmentsPlayed(), Contains(1000 + 4));
    EXPECT_EQ(stretches(), 2U);
    EXPECT_THAT(events, Not(Contains(stalled)));
}

TEST_F(HlsLiveTest, aDiscontinuityBeginsAStretchAndIsNotHeard)
{
    for (int number = 0; number < 100; number += 3)
        station.discontinuities.insert(number);
    listen(list, 60s);
    EXPECT_TRUE(isPlayedWithoutABreak());
    EXPECT_GE(stretches(), 4U);
    EXPECT_THAT(events, Not(Contains(stalled)));
}

TEST_F(HlsLiveTest, theEndOfTheListIsAnEnd)
{
    station.last = 5;
    listen(list, 25s);
    EXPECT_THAT(segmentsPlayed(), ElementsAre(0, 1, 2, 3, 4));
    EXPECT_EQ(events.back(), QStringLiteral("ended"));
    EXPECT_EQ(station.asked(list), 2);
}

TEST_F(HlsLiveTest, readingStopsWhereEnoughIsInReserve)
{
    station.last = 1000;
    station.script = [this](const QString& path, const StreamRequest&) -> std::optional<FakeHlsStation::Reply> {
        if (path != list)
            return std::nullopt;
        return FakeHlsStation::Reply{ .body = station.list(0, 1000) + "#EXT-X-ENDLIST\n" };
    };
    listen(list, 10s);
    EXPECT_LE(station.requests.size(), 22U);
    advance(10min);
    EXPECT_LE(station.requests.size(), 22U + 600U / 3U);
    EXPECT_TRUE(isPlayedWithoutABreak());
}

TEST_F(HlsLiveTest, aPauseAsksForNothing)
{
    listen(list, 20s);
    player->pause();
    settle();
    const std::size_t before = station.requests.size();
    advance(15s);
    EXPECT_EQ(station.requests.size(), before);
    player->play();
    advance(30s);
    EXPECT_TRUE(isPlayedWithoutABreak());
}

TEST_F(HlsLiveTest, nothingIsAskedAfterTheItemIsGone)
{
    listen(list, 20s);
    player->replaceCurrentItem(std::nullopt);
    advance(1s);
    EXPECT_EQ(m_engine->m_connections.open(), 0U);
    const std::size_t before = station.requests.size();
    advance(1min);
    EXPECT_EQ(station.requests.size(), before);
}

TEST_F(HlsLiveTest, thePeakBitRateChoosesTheVariant)
{
    station.variants = { { QStringLiteral("low"), 48000 }, { QStringLiteral("mid"), 96000 },
        { QStringLiteral("top"), 256000 } };
    listen(master, 2s, 128000);
    EXPECT_EQ(station.asked(QStringLiteral("/mid/list")), 1);
    EXPECT_EQ(station.asked(QStringLiteral("/low/list")) + station.asked(QStringLiteral("/top/list")), 0);
}

TEST_F(HlsLiveTest, theLowestVariantIsTakenWhereNoneFits)
{
    station.variants = { { QStringLiteral("low"), 96000 }, { QStringLiteral("top"), 256000 } };
    listen(master, 2s, 48000);
    EXPECT_EQ(station.asked(QStringLiteral("/low/list")), 1);
    EXPECT_EQ(station.asked(QStringLiteral("/top/list")), 0);
}

TEST_F(HlsLiveTest, anAudioRenditionIsHeardInPlaceOfItsVariant)
{
    station.script = [](const QString& path, const StreamRequest&) -> std::optional<FakeHlsStation::Reply> {
        if (path != master)
            return std::nullopt;
        return FakeHlsStation::Reply{ .body = "#EXTM3U\n#EXT-X-MEDIA:TYPE=AUDIO,GROUP-ID=\"g\",NAME=\"it\",DEFAULT=YES,"
                                              "URI=\"sound/list\"\n#EXT-X-STREAM-INF:BANDWIDTH=900000,AUDIO=\"g\"\n"
                                              "picture/list\n" };
    };
    listen(master, 5s);
    EXPECT_EQ(station.asked(QStringLiteral("/picture/list")), 0);
    EXPECT_TRUE(isPlayedWithoutABreak());
}

}
