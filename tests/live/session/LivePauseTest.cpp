// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/session/LivePlayerFixture.h"

namespace velarin::live::test {

using testing::ElementsAre;
using testing::IsEmpty;

class LivePauseTest : public LivePlayerTest
{
protected:
    void SetUp() override
    {
        startSounding();
        stream(12s);
        events.clear();
    }
    void pause()
    {
        player->pause();
        settle();
    }
    void resume()
    {
        player->play();
        settle();
    }
};

TEST_F(LivePauseTest, aPauseSilencesKeepsTheItemAndStopsReading)
{
    pause();
    EXPECT_THAT(takeEvents(), ElementsAre(QStringLiteral("paused")));
    EXPECT_FALSE(sound().isPlaying);
    EXPECT_FALSE(server().isReading);
    EXPECT_TRUE(player->currentItem().has_value());
    const double time = player->currentTime();
    advance(10s);
    EXPECT_EQ(player->currentTime(), time);
    EXPECT_EQ(asked(), 1U);
}

TEST_F(LivePauseTest, whilePausedTheEngineSleeps)
{
    pause();
    EXPECT_EQ(m_engine->m_loop.timers(), 0U);
}

TEST_F(LivePauseTest, aResumePlaysTheReserveWithoutALoss)
{
    pause();
    advance(10s);
    resume();
    EXPECT_TRUE(server().isReading);
    stream(5s);
    EXPECT_THAT(breaksIn(played(), 0), IsEmpty());
    EXPECT_THAT(
        takeEvents(), ElementsAre(QStringLiteral("paused"), QStringLiteral("waiting"), QStringLiteral("playing")));
}

TEST_F(LivePauseTest, whatEndedMeanwhileIsMendedAtTheResume)
{
    pause();
    server().reset();
    advance(10s);
    EXPECT_EQ(asked(), 1U);
    resume();
    advance(1ms);
    ASSERT_EQ(asked(), 2U);
    answerWithBurst(4.0);
    stream(5s);
    EXPECT_THAT(breaksIn(played(), 0), IsEmpty());
}

TEST_F(LivePauseTest, aPauseEndsTheAsking)
{
    server().close();
    advance(100ms);
    ASSERT_EQ(asked(), 2U);
    pause();
    EXPECT_EQ(m_engine->m_connections.open(), 0U);
    advance(30s);
    EXPECT_EQ(asked(), 2U);
    resume();
    advance(600ms);
    EXPECT_EQ(asked(), 3U);
}

TEST_F(LivePauseTest, aPauseInADrySpellIsNotCountedAgainstTheItem)
{
    server().close();
    advance(5s);
    events.clear();
    pause();
    advance(1min);
    resume();
    advance(5s);
    EXPECT_FALSE(events.contains(QStringLiteral("ended")));
    advance(2s);
    EXPECT_TRUE(events.contains(QStringLiteral("ended")));
}

TEST_F(LivePauseTest, aPauseBeforeTheFirstSoundHoldsItBack)
{
    start();
    pause();
    events.clear();
    send(0, framesIn(4.0));
    advance(1s);
    EXPECT_THAT(takeEvents(), IsEmpty());
    resume();
    server().bytes({});
    advance(100ms);
    EXPECT_TRUE(events.contains(QStringLiteral("playing")));
}

TEST_F(LivePauseTest, pausingTwiceAndPlayingTwiceAreToldOnce)
{
    player->pause();
    player->pause();
    settle();
    player->play();
    player->play();
    advance(100ms);
    EXPECT_THAT(
        takeEvents(), ElementsAre(QStringLiteral("paused"), QStringLiteral("waiting"), QStringLiteral("playing")));
}

}
