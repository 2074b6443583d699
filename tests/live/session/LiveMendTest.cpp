// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/session/LivePlayerFixture.h"

namespace velarin::live::test {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// A station that has sounded for a while, with four seconds in reserve, and what then happens to its connection.
class LiveMendTest : public LivePlayerTest
{
protected:
    void SetUp() override
    {
        startSounding();
        stream(12s);
        events.clear();
    }
    // The programme goes on while nobody receives it.
    void pass(std::chrono::milliseconds duration)
    {
        advance(duration);
        m_programme += static_cast<int>(std::chrono::duration<double>(duration).count() / frameSeconds);
    }
    void expectWhole()
    {
        EXPECT_THAT(breaksIn(played(), 0), IsEmpty());
        EXPECT_THAT(takeEvents(), IsEmpty());
    }
};

TEST_F(LiveMendTest, aCleanCloseIsMendedUnheard)
{
    server().close();
    settle();
    ASSERT_EQ(asked(), 2U);
    answerWithBurst(4.0);
    stream(10s);
    expectWhole();
    EXPECT_THAT(sound().branches, SizeIs(1)) << "it goes on within the same branch";
}

TEST_F(LiveMendTest, aResetIsMendedUnheard)
{
    server().reset();
    settle();
    ASSERT_EQ(asked(), 2U);
    answerWithBurst(4.0);
    stream(10s);
    expectWhole();
}

TEST_F(LiveMendTest, aConnectionSilentForHalfOfItsReserveIsReplaced)
{
    advance(1700ms);
    EXPECT_EQ(asked(), 1U);
    pass(500ms);
    m_programme += framesIn(1.7);
    ASSERT_EQ(asked(), 2U);
    EXPECT_TRUE(m_engine->m_connections.all.front()->isOpen()) << "it may still be the first to deliver";
    answerWithBurst(4.0);
    EXPECT_FALSE(m_engine->m_connections.all.front()->isOpen());
    stream(10s);
    expectWhole();
}

TEST_F(LiveMendTest, aSilentConnectionThatDeliversFirstIsKept)
{
    const auto silent = m_engine->m_connections.all.back();
    advance(2200ms);
    ASSERT_EQ(asked(), 2U);
    silent->bytes(frames(m_programme, m_programme + framesIn(2.2)));
    settle();
    EXPECT_TRUE(silent->isOpen());
    EXPECT_EQ(m_engine->m_connections.open(), 1U);
    advance(100ms);
    expectWhole();
}

TEST_F(LiveMendTest, whateverAMendIsAnsweredItAsksOn)
{
    server().close();
    settle();
    for (const int status : { 404, 503, 401, 500 }) {
        server().answer(status);
        advance(500ms);
    }
    server().head("text/html");
    server().bytes("<html><body>come back later</body></html>" + QByteArray(500, ' '));
    advance(1s);
    EXPECT_EQ(asked(), 7U);
    answerWithBurst(4.0 + 3.0);
    stream(3s);
    expectWhole();
}

TEST_F(LiveMendTest, itAsksAtOnceThenEveryHalfSecondThenEverySecond)
{
    std::vector<double> asks;
    const auto began = m_engine->m_loop.now();
    server().close();
    std::size_t before = 1;
    for (int step = 0; step < 70; ++step) {
        advance(50ms);
        if (asked() == before)
            continue;
        before = asked();
        asks.push_back(std::chrono::duration<double>(m_engine->m_loop.now() - began).count());
        server().answer(503);
    }
    ASSERT_GE(asks.size(), 6U);
    EXPECT_NEAR(asks[0], 0.0, 0.051);
    for (std::size_t ask = 1; ask <= 4; ++ask)
        EXPECT_NEAR(asks[ask] - asks[ask - 1], 0.5, 0.051);
    EXPECT_NEAR(asks[5] - asks[4], 1.0, 0.051);
}

TEST_F(LiveMendTest, itAlwaysAsksTheFirstAddress)
{
    start(QUrl(QStringLiteral("http://radio.test/list.m3u")));
    server().head("audio/x-mpegurl");
    server().bytes("http://radio.test/session?token=1\n");
    server().close();
    settle();
    m_programme = 0;
    stream(15s);
    server().close();
    settle();
    EXPECT_EQ(server().request.url, QUrl(QStringLiteral("http://radio.test/list.m3u")));
}

TEST_F(LiveMendTest, withoutOverlapANewBranchFollowsTheOldSound)
{
    server().close();
    settle();
    const int gap = 200;
    const int lastBefore = m_programme - 1;
    m_programme += gap;
    answerWithBurst(0.5);
    stream(10s);
    EXPECT_THAT(sound().branches, SizeIs(2));
    EXPECT_TRUE(sound().branches.front().ended);
    const std::vector<int> numbers = played();
    EXPECT_THAT(breaksIn(numbers, 0), SizeIs(1));
    EXPECT_NE(std::find(numbers.begin(), numbers.end(), lastBefore), numbers.end()) << "the old sound is all played";
    EXPECT_THAT(takeEvents(), IsEmpty());
}

TEST_F(LiveMendTest, anotherCodecTakesOverAtTheEndOfTheOldSound)
{
    server().close();
    settle();
    server().head("application/ogg");
    QByteArray page("OggS");
    page += QByteArray("\0\2\0\0\0\0\0\0\0\0\1\0\0\0\0\0\0\0\0\0\0\0\1\x13", 24) +
            QByteArray("OpusHead\1\2\x38\1\x80\xbb\0\0\0\0\0", 19);
    server().bytes(page + QByteArray(4096, 'x'));
    advance(5s);
    ASSERT_THAT(sound().branches, SizeIs(2));
    EXPECT_EQ(sound().branches.back().format, SoundFormat::Ogg);
    EXPECT_THAT(breaksIn(numbersIn(sound().branches.front().pushed), 0), IsEmpty());
}

TEST_F(LiveMendTest, aServerWithoutABurstIsMendedToo)
{
    server().reset();
    settle();
    const int lost = 4;
    m_programme += lost;
    stream(10s);
    EXPECT_THAT(takeEvents(), IsEmpty());
    EXPECT_THAT(breaksIn(played(), 0), SizeIs(1));
}

TEST_F(LiveMendTest, anAskThatNobodyAnswersGetsCompany)
{
    server().close();
    advance(100ms);
    ASSERT_EQ(asked(), 2U);
    advance(1800ms);
    EXPECT_EQ(asked(), 2U);
    advance(200ms);
    EXPECT_EQ(asked(), 3U);
    advance(2s);
    EXPECT_EQ(asked(), 4U);
    EXPECT_EQ(m_engine->m_connections.open(), 2U);
    EXPECT_TRUE(m_engine->m_connections.all[1]->isOpen()) << "a slow server is given its time";
}

TEST_F(LiveMendTest, theConnectionThatMendedIsMendedInItsTurn)
{
    for (int round = 0; round < 3; ++round) {
        server().close();
        settle();
        answerWithBurst(4.0);
        stream(12s);
    }
    EXPECT_EQ(asked(), 4U);
    expectWhole();
}

TEST_F(LiveMendTest, aConnectionThatOnlyRepeatsDoesNotCountAsOne)
{
    server().close();
    settle();
    for (int ask = 0; ask < 3; ++ask) {
        answerWithBurst(4.0);
        server().close();
        advance(500ms);
    }
    EXPECT_EQ(asked(), 5U);
    answerWithBurst(4.0);
    stream(5s);
    expectWhole();
}

TEST_F(LiveMendTest, anAnswerThatCannotBeDecodedIsAskedAgain)
{
    server().close();
    settle();
    m_programme = 100'000;
    stream(4500ms);
    ASSERT_THAT(sound().branches, SizeIs(2));
    pipeline().failBranch(pipeline().newestBranch(), { { AudioErrorDomain::gstStream, 7, QStringLiteral("broken") } });
    advance(1s);
    EXPECT_EQ(asked(), 3U);
}

TEST_F(LiveMendTest, inTheFirstTenSecondsNothingIsMended)
{
    startSounding();
    stream(5s);
    const std::size_t before = asked();
    server().close();
    advance(3s);
    EXPECT_EQ(asked(), before);
}

TEST_F(LiveMendTest, aServerThatSendsInGulpsIsNotTakenForSilent)
{
    for (int gulp = 0; gulp < 10; ++gulp) {
        advance(1500ms);
        const int next = m_programme + framesIn(1.5);
        send(m_programme, next);
        m_programme = next;
    }
    advance(2500ms);
    EXPECT_EQ(asked(), 1U);
}

}
