// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/session/LivePlayerFixture.h"

namespace velarin::live::test {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QUrl other(QStringLiteral("http://radio.test/other"));

}

// The main thread's side: items, observers and the moment at which they hear.
class LiveFaceTest : public LivePlayerTest
{
};

TEST_F(LiveFaceTest, nothingStartsBeforeTheFirstItem)
{
    bool started = false;
    LiveAudioPlayer idle([&] {
        started = true;
        return m_engine;
    });
    idle.play();
    idle.pause();
    idle.setVolume(0.5F);
    idle.replaceCurrentItem(std::nullopt);
    settle();
    EXPECT_FALSE(started);
}

TEST_F(LiveFaceTest, nothingCallsBackFromInsideACall)
{
    const AudioItem item = makeAudioItem(other);
    observe(item.id);
    player->replaceCurrentItem(item);
    player->play();
    player->pause();
    player->play();
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(LiveFaceTest, gettersAnswerAsOfTheLastEvent)
{
    start();
    send(0, framesIn(4.0));
    player->pause();
    EXPECT_EQ(player->timeControl(), TimeControl::Waiting) << "the pause has not been told yet";
    settle();
    EXPECT_EQ(player->timeControl(), TimeControl::Paused);
}

TEST_F(LiveFaceTest, anObserverHearsOfItsOwnItemOnly)
{
    const AudioItemId first = start();
    observe(first, QStringLiteral("first "));
    const AudioItemId second = start(other);
    observe(second, QStringLiteral("second "));
    events.clear();
    server().answer(500);
    settle();
    EXPECT_THAT(events, Contains(QStringLiteral("second http 500")));
    EXPECT_THAT(events.filter(QStringLiteral("first")), IsEmpty());
}

TEST_F(LiveFaceTest, anEventOnItsWayReachesNobodyOnceTheObserverIsGone)
{
    start();
    send(0, framesIn(4.0));
    server().close();
    observations.clear();
    settle();
    advance(6s);
    EXPECT_THAT(events.filter(QStringLiteral("ended")), IsEmpty());
}

TEST_F(LiveFaceTest, replacingAnItemClosesItsConnectionAndItsSound)
{
    startSounding();
    const auto former = m_engine->m_connections.all.back();
    start(other);
    EXPECT_FALSE(former->isOpen());
    EXPECT_EQ(sound().alive, 1);
    EXPECT_EQ(player->timeControl(), TimeControl::Waiting);
}

TEST_F(LiveFaceTest, theFormerItemsPlayingIsNotTakenForTheNewItems)
{
    start();
    send(0, framesIn(4.0));
    m_engine->m_loop.advance(0ms);
    // The former item is heard in the very turn in which it is replaced.
    const AudioItem next = makeAudioItem(other);
    player->replaceCurrentItem(next);
    events.clear();
    advance(1s);
    EXPECT_THAT(events.filter(QStringLiteral("playing")), IsEmpty());
}

TEST_F(LiveFaceTest, withoutAnItemThereIsSilenceAndNoConnection)
{
    startSounding();
    player->pause();
    player->replaceCurrentItem(std::nullopt);
    settle();
    EXPECT_EQ(m_engine->m_connections.open(), 0U);
    EXPECT_EQ(sound().alive, 0);
    EXPECT_EQ(player->currentItem(), std::nullopt);
    EXPECT_EQ(player->currentItemStatus(), ItemStatus::Unknown);
    EXPECT_EQ(player->timeControl(), TimeControl::Paused);
    EXPECT_TRUE(std::isnan(player->currentTime()));
    EXPECT_EQ(m_engine->m_loop.timers(), 0U);
}

TEST_F(LiveFaceTest, anItemIsNotPlayedUntilItIsAskedFor)
{
    const AudioItem item = makeAudioItem(other);
    observe(item.id);
    player->replaceCurrentItem(item);
    settle();
    send(0, framesIn(4.0));
    advance(1s);
    EXPECT_FALSE(sound().isPlaying);
    EXPECT_THAT(takeEvents(), ElementsAre(QStringLiteral("ready"), QStringLiteral("likely")));
    player->play();
    advance(100ms);
    EXPECT_THAT(takeEvents(), ElementsAre(QStringLiteral("waiting"), QStringLiteral("playing")));
}

TEST_F(LiveFaceTest, aLiveItemNeitherSeeksNorChangesItsRate)
{
    startSounding();
    player->seek(100.0);
    player->playAtRate(2.0);
    stream(2s);
    EXPECT_NEAR(player->currentTime(), 2.0, 0.3);
}

TEST_F(LiveFaceTest, thePlayerMayBeDestroyedInsideAHandler)
{
    const AudioItem item = makeAudioItem(other);
    AudioPlayer::ItemHandlers handlers;
    int heard = 0;
    handlers.httpStatus = [&](int) {
        ++heard;
        player.reset();
    };
    handlers.status = [&](ItemStatus, const AudioErrorChain&) { ++heard; };
    observations.push_back(player->observe(item.id, handlers));
    observations.push_back(player->observe(item.id, handlers));
    player->replaceCurrentItem(item);
    player->play();
    settle();
    server().answer(404);
    settle();
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(m_engine->m_connections.open(), 0U);
}

TEST_F(LiveFaceTest, anObserverMayReplaceTheItemInsideAHandler)
{
    const AudioItem item = makeAudioItem(other);
    AudioPlayer::ItemHandlers handlers;
    handlers.status = [&](ItemStatus, const AudioErrorChain&) {
        observations.clear();
        player->replaceCurrentItem(makeAudioItem(other));
    };
    observations.push_back(player->observe(item.id, handlers));
    player->replaceCurrentItem(item);
    player->play();
    settle();
    server().answer(404);
    settle();
    EXPECT_EQ(asked(), 2U);
    EXPECT_EQ(m_engine->m_connections.open(), 1U);
}

TEST_F(LiveFaceTest, eventsAfterThePlayerIsGoneFindNobody)
{
    start();
    send(0, framesIn(4.0));
    events.clear();
    player.reset();
    advance(10s);
    EXPECT_THAT(events, IsEmpty());
    EXPECT_EQ(sound().alive, 0);
}

}
