// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/session/LivePlayerFixture.h"

namespace velarin::live::test {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QString waiting = QStringLiteral("waiting");
const QString stalled = QStringLiteral("stalled");
const QString ended = QStringLiteral("ended");

}

// The sound of a station ends.
class LiveEndTest : public LivePlayerTest
{
protected:
    void SetUp() override
    {
        startSounding();
        stream(12s);
        events.clear();
    }
    // Answers every ask with the status until so much time has passed.
    void refuseFor(std::chrono::milliseconds duration)
    {
        for (std::chrono::milliseconds passed{ 0 }; passed < duration; passed += 50ms) {
            if (server().isOpen() && asked() > 1)
                server().answer(503);
            advance(50ms);
        }
    }
};

TEST_F(LiveEndTest, whileSoundIsInReserveNothingIsTold)
{
    server().close();
    refuseFor(3700ms);
    EXPECT_THAT(takeEvents(), IsEmpty());
}

TEST_F(LiveEndTest, aDryReserveIsToldOnceAsWaitingAndStalled)
{
    server().close();
    refuseFor(6s);
    EXPECT_THAT(takeEvents(), ElementsAre(waiting, stalled));
    EXPECT_EQ(player->timeControl(), TimeControl::Waiting);
}

TEST_F(LiveEndTest, afterADryReserveItAsksOnAtMostASecondApart)
{
    server().close();
    refuseFor(5s);
    const std::size_t before = asked();
    refuseFor(4s);
    EXPECT_GE(asked() - before, 4U);
}

TEST_F(LiveEndTest, sixSecondsAfterACleanCloseItHasPlayedToTheEnd)
{
    server().close();
    refuseFor(9800ms);
    EXPECT_THAT(takeEvents(), ElementsAre(waiting, stalled));
    refuseFor(400ms);
    EXPECT_THAT(takeEvents(), ElementsAre(ended));
    EXPECT_EQ(m_engine->m_connections.open(), 0U);
}

TEST_F(LiveEndTest, sixSecondsAfterAResetItFailedWithTheFirstCause)
{
    server().reset();
    refuseFor(10200ms);
    EXPECT_THAT(takeEvents(), ElementsAre(waiting, stalled, QStringLiteral("broke: reset 56")));
}

TEST_F(LiveEndTest, aSilentConnectionStaysStalledAndIsAskedOn)
{
    advance(10s);
    EXPECT_THAT(takeEvents(), ElementsAre(waiting, stalled));
    const std::size_t before = asked();
    advance(20s);
    EXPECT_THAT(takeEvents(), IsEmpty());
    EXPECT_GT(asked(), before);
    EXPECT_LE(m_engine->m_connections.open(), 3U);
}

TEST_F(LiveEndTest, aSilentConnectionThatBreaksNamesTheBreak)
{
    const auto silent = m_engine->m_connections.all.back();
    advance(5s);
    silent->reset();
    refuseFor(6s);
    EXPECT_THAT(takeEvents(), ElementsAre(waiting, stalled, QStringLiteral("broke: reset 56")));
}

TEST_F(LiveEndTest, soundThatComesBackWithinSixSecondsGoesOn)
{
    server().close();
    refuseFor(7s);
    events.clear();
    m_programme += framesIn(7.0);
    answerWithBurst(4.0);
    // The overlap is looked for a quarter of a second.
    advance(350ms);
    EXPECT_THAT(takeEvents(), ElementsAre(QStringLiteral("likely"), QStringLiteral("playing")));
    stream(10s);
    EXPECT_THAT(takeEvents(), IsEmpty());
}

TEST_F(LiveEndTest, afterADrySpellSoundWaitsForASecondInReserve)
{
    advance(5s);
    events.clear();
    FakeConnection& silent = *m_engine->m_connections.all.front();
    silent.bytes(frames(m_programme, m_programme + framesIn(0.9)));
    advance(200ms);
    EXPECT_FALSE(sound().isPlaying);
    silent.bytes(frames(m_programme + framesIn(0.9), m_programme + framesIn(1.1)));
    advance(50ms);
    EXPECT_TRUE(sound().isPlaying);
    EXPECT_THAT(takeEvents(), ElementsAre(QStringLiteral("likely"), QStringLiteral("playing")));
}

TEST_F(LiveEndTest, eachDrySpellIsToldAnew)
{
    for (int spell = 0; spell < 3; ++spell) {
        advance(6s);
        EXPECT_THAT(takeEvents(), ElementsAre(waiting, stalled));
        const auto first = m_engine->m_connections.all.front();
        const int next = m_programme + framesIn(1.5);
        first->bytes(frames(m_programme, next));
        m_programme = next;
        advance(100ms);
        EXPECT_THAT(takeEvents(), ElementsAre(QStringLiteral("likely"), QStringLiteral("playing")));
    }
}

TEST_F(LiveEndTest, aServerThatHangsUpEachTimeEndsAsAFailure)
{
    startSounding();
    stream(3s);
    const std::size_t before = asked();
    server().reset();
    advance(3s);
    events.clear();
    advance(3s);
    EXPECT_THAT(takeEvents(), ElementsAre(waiting, stalled, QStringLiteral("broke: reset 56")));
    EXPECT_EQ(asked(), before);
}

TEST_F(LiveEndTest, aMendThatGaveLittleDoesNotEarnAnother)
{
    server().close();
    settle();
    answerWithBurst(4.0);
    stream(3s);
    const std::size_t before = asked();
    server().reset();
    advance(8s);
    EXPECT_EQ(asked(), before);
    EXPECT_THAT(takeEvents(), ElementsAre(waiting, stalled, QStringLiteral("broke: reset 56")));
}

TEST_F(LiveEndTest, aSlowLineIsWaitedForAndIsNoEnd)
{
    for (int second = 0; second < 30; ++second) {
        const int next = m_programme + framesIn(0.5);
        send(m_programme, next);
        m_programme = next;
        advance(1s);
    }
    EXPECT_FALSE(events.contains(ended));
    EXPECT_TRUE(events.contains(stalled));
    EXPECT_EQ(asked(), 1U);
}

TEST_F(LiveEndTest, nothingIsLeftRunningAfterTheEnd)
{
    server().close();
    refuseFor(11s);
    EXPECT_EQ(sound().alive, 0);
    EXPECT_EQ(m_engine->m_connections.open(), 0U);
    EXPECT_EQ(m_engine->m_loop.timers(), 0U);
}

TEST_F(LiveEndTest, aLostDeviceIsToldAsPausedByItself)
{
    pipeline().failDevice();
    settle();
    EXPECT_THAT(takeEvents(), ElementsAre(QStringLiteral("paused")));
    EXPECT_FALSE(server().isReading);
    player->play();
    advance(100ms);
    EXPECT_THAT(takeEvents(), ElementsAre(waiting, QStringLiteral("playing")));
}

}
