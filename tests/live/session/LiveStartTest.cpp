// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/session/LivePlayerFixture.h"

namespace velarin::live::test {

using testing::ElementsAre;
using testing::IsEmpty;

class LiveStartTest : public LivePlayerTest
{
};

namespace {

QString word(const char* text)
{
    return QString::fromLatin1(text);
}

}

TEST_F(LiveStartTest, asksTheAddressWithTheHeadersOfTheItem)
{
    AudioItem item = makeAudioItem(QUrl(QStringLiteral("http://radio.test/live")));
    item.headers = { { "User-Agent", "somebody" }, { "Icy-MetaData", "1" } };
    player->replaceCurrentItem(item);
    settle();
    ASSERT_EQ(asked(), 1U);
    EXPECT_EQ(server().request.url, item.url);
    EXPECT_EQ(server().request.headers, item.headers);
}

TEST_F(LiveStartTest, tellsReadyThenLikelyThenPlaying)
{
    start();
    EXPECT_THAT(takeEvents(), ElementsAre(word("waiting")));
    send(0, framesIn(4.0));
    advance(50ms);
    EXPECT_THAT(takeEvents(), ElementsAre(word("ready"), word("likely"), word("playing")));
    EXPECT_EQ(player->timeControl(), TimeControl::Playing);
    EXPECT_EQ(player->currentItemStatus(), ItemStatus::Ready);
}

TEST_F(LiveStartTest, atFullQualitySoundBeginsWithThreeTenthsOfASecond)
{
    start();
    send(0, framesIn(0.28));
    advance(100ms);
    EXPECT_FALSE(sound().isPlaying);
    send(framesIn(0.28), framesIn(0.35));
    advance(50ms);
    EXPECT_TRUE(sound().isPlaying);
}

struct TierStart
{
    double forwardBuffer;
    double seconds;
};

class LiveTierTest : public LivePlayerTest, public testing::WithParamInterface<TierStart>
{
};

TEST_P(LiveTierTest, aLowerTierBeginsWithMoreInReserve)
{
    start(QUrl(QStringLiteral("http://radio.test/live")), GetParam().forwardBuffer);
    const int enough = framesIn(GetParam().seconds) + 2;
    send(0, enough - 5);
    advance(1s);
    EXPECT_FALSE(sound().isPlaying);
    send(enough - 5, enough);
    advance(50ms);
    EXPECT_TRUE(sound().isPlaying);
}

INSTANTIATE_TEST_SUITE_P(
    Tiers, LiveTierTest, testing::Values(TierStart{ 12.0, 1.0 }, TierStart{ 24.0, 2.0 }, TierStart{ 36.0, 3.0 }));

TEST_F(LiveStartTest, withoutABurstItSoundsAsSoonAsThereIsEnough)
{
    start();
    stream(500ms);
    EXPECT_EQ(player->timeControl(), TimeControl::Playing);
    EXPECT_THAT(breaksIn(played(), 0), IsEmpty());
}

TEST_F(LiveStartTest, theTimeIsTheSoundHeardAndStandsStillInSilence)
{
    EXPECT_TRUE(std::isnan(player->currentTime()));
    startSounding();
    stream(10s);
    EXPECT_NEAR(player->currentTime(), 10.0, 0.3);
    advance(20s);
    const double atTheEnd = player->currentTime();
    EXPECT_NEAR(atTheEnd, 14.0, 0.5);
    advance(20s);
    EXPECT_EQ(player->currentTime(), atTheEnd);
}

TEST_F(LiveStartTest, theTimeBeginsAnewWithEachItem)
{
    startSounding();
    stream(5s);
    start();
    EXPECT_EQ(player->currentTime(), 0.0);
}

TEST_F(LiveStartTest, deafOutputIsNeverToldAsPlaying)
{
    start();
    pipeline().isDeaf = true;
    send(0, framesIn(4.0));
    advance(10s);
    EXPECT_EQ(player->timeControl(), TimeControl::Waiting);
    EXPECT_EQ(player->currentTime(), 0.0);
}

TEST_F(LiveStartTest, aServerThatSendsTooFastIsNotReadBeyondAMinute)
{
    start();
    for (int second = 0; second < 120; ++second) {
        server().bytes(frames(second * 38, (second + 1) * 38));
        settle();
    }
    EXPECT_FALSE(server().isReading);
    advance(2s);
    EXPECT_FALSE(server().isReading);
    advance(10s);
    EXPECT_TRUE(server().isReading);
}

TEST_F(LiveStartTest, aLongForwardBufferRaisesTheBound)
{
    start(QUrl(QStringLiteral("http://radio.test/live")), 90.0);
    send(0, framesIn(80.0));
    settle();
    EXPECT_TRUE(server().isReading);
    send(framesIn(80.0), framesIn(95.0));
    settle();
    EXPECT_FALSE(server().isReading);
}

TEST_F(LiveStartTest, aFullReserveIsNoSilence)
{
    start();
    send(0, framesIn(70.0));
    advance(9s);
    EXPECT_EQ(asked(), 1U);
}

TEST_F(LiveStartTest, theVolumeReachesThePipelineBeforeAndAfterItIsMade)
{
    player->setVolume(0.25F);
    start();
    EXPECT_EQ(sound().volume, 0.25F);
    player->setVolume(0.5F);
    settle();
    EXPECT_EQ(sound().volume, 0.5F);
    player->setVolume(7.0F);
    EXPECT_EQ(player->volume(), 1.0F);
}

}
