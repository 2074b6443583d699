// SPDX-License-Identifier: GPL-3.0-or-later
// Attacks on the player's sense of which session it is in: whatever comes too late does nothing.
#include "RadioWorld.h"
#include "StubbornServices.h"

namespace velarin::test {

using RadioPlayerTurnTest = RadioPlayerTest;
using RadioPlayerSkipTest = RadioPlayerTest;
using RadioPlayerEndTest = RadioPlayerTest;
using RadioPlayerListenerTest = RadioPlayerTest;

class RadioPlayerLateEventTest : public RadioPlayerTest
{
protected:
    RadioPlayerLateEventTest() { build(stubborn, clock); }

    void tellEverything(AudioItemId item)
    {
        const AudioPlayer::ItemHandlers& late = stubborn.heard.at(item);
        late.httpStatus(404);
        late.status(ItemStatus::Failed, chainOf(u"reset"_s, 104));
        late.failedToPlayToEnd({});
        late.playedToEnd();
        late.stalled();
    }

    StubbornAudioPlayer stubborn{ player };
};

TEST_F(RadioPlayerLateEventTest, aFormerStationsEventsDoNothing)
{
    radio->play(uno, list);
    const AudioItemId former = itemId();
    radio->play(due, list);
    const auto timers = clock.pendingTimers();
    takeLog();
    tellEverything(former);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
    EXPECT_EQ(url(), due.streamUrl);
    EXPECT_EQ(clock.pendingTimers(), timers);
    EXPECT_TRUE(takeLog().isEmpty());
}

TEST_F(RadioPlayerLateEventTest, aFormerSessionOfTheSameStationDoesNothing)
{
    hear(uno);
    const AudioItemId former = itemId();
    hear(uno);
    takeLog();
    tellEverything(former);
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
    EXPECT_TRUE(takeLog().isEmpty());
}

TEST_F(RadioPlayerLateEventTest, eventsAfterAStopDoNothing)
{
    hear(uno);
    const AudioItemId former = itemId();
    radio->stop();
    takeLog();
    tellEverything(former);
    clock.advance(1h);
    EXPECT_EQ(radio->state(), PlaybackState(Idle{}));
    EXPECT_TRUE(takeLog().isEmpty());
}

TEST_F(RadioPlayerLateEventTest, eventsAfterAPauseDoNothing)
{
    hear(uno);
    radio->pause();
    takeLog();
    tellEverything(itemId());
    clock.advance(1h);
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    EXPECT_TRUE(takeLog().isEmpty());
}

TEST_F(RadioPlayerLateEventTest, eventsDuringThePatientWaitDoNothing)
{
    radio->play(uno, list);
    const AudioItemId former = itemId();
    failRun();
    takeLog();
    tellEverything(former);
    EXPECT_TRUE(takeLog().isEmpty());
    clock.advance(15s);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
}

TEST_F(RadioPlayerLateEventTest, aFormerStationsTitleIsTakenAsAnyOther)
{
    hear(uno);
    const AudioItemId former = itemId();
    hear(due);
    stubborn.heard.at(former).title(u"Artist - Song"_s);
    EXPECT_EQ(radio->songTitle(), u"Song"_s);
}

class RadioPlayerLateTimerTest : public RadioPlayerTest
{
protected:
    RadioPlayerLateTimerTest() { build(player, stubborn); }

    StubbornClock stubborn{ clock };
};

TEST_F(RadioPlayerLateTimerTest, noTimerOfAFormerSessionDoesAnything)
{
    radio->play(uno, list);
    fail();
    clock.advance(1s);
    hear();
    player.tellTimeControl(TimeControl::Waiting);
    failRun();
    radio->play(due, list);
    hear();
    const auto items = player.items.size();
    takeLog();
    listen(150s);
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
    EXPECT_EQ(player.items.size(), items);
    EXPECT_TRUE(takeLog().isEmpty());
}

TEST_F(RadioPlayerLateTimerTest, noTimerDoesAnythingAfterAPause)
{
    radio->play(uno, list);
    fail();
    clock.advance(1s);
    hear();
    player.tellTimeControl(TimeControl::Waiting);
    radio->pause();
    takeLog();
    clock.advance(1h);
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    EXPECT_TRUE(takeLog().isEmpty());
    EXPECT_EQ(radio->quality().tier, 1);
}

TEST_F(RadioPlayerLateTimerTest, noRetryComesAfterAPauseOrAStop)
{
    radio->play(uno, list);
    fail();
    radio->pause();
    radio->play(uno, list);
    fail();
    radio->stop();
    const auto items = player.items.size();
    clock.advance(1h);
    EXPECT_EQ(player.items.size(), items);
    EXPECT_EQ(radio->state(), PlaybackState(Idle{}));
}

TEST_F(RadioPlayerLateTimerTest, noPatientRetryComesAfterAPauseOrAStop)
{
    radio->play(uno, list);
    failRun();
    radio->pause();
    clock.advance(1h);
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    radio->play(uno, list);
    failRun();
    radio->stop();
    clock.advance(1h);
    EXPECT_EQ(radio->state(), PlaybackState(Idle{}));
    EXPECT_FALSE(player.item);
}

TEST_F(RadioPlayerTurnTest, aPauseInTheTurnOfTheConnectTimeoutWins)
{
    const Task pause = clock.after(8s, [this] { radio->pause(); });
    radio->play(uno, list);
    clock.advance(1h);
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    EXPECT_TRUE(takeLog().filter(u"fallito"_s).isEmpty());
}

TEST_F(RadioPlayerTurnTest, aPauseRightAfterTheConnectTimeoutStopsItsRetry)
{
    radio->play(uno, list);
    const Task pause = clock.after(8s, [this] { radio->pause(); });
    clock.advance(1h);
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    EXPECT_EQ(takeLog().filter(u"fallito"_s).size(), 1);
    EXPECT_EQ(player.items.size(), 1u);
}

TEST_F(RadioPlayerTurnTest, aPauseInTheTurnOfTheRetryWins)
{
    radio->play(uno, list);
    const Task pause = clock.after(1s, [this] { radio->pause(); });
    fail();
    clock.advance(1h);
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    EXPECT_EQ(player.items.size(), 1u);
}

TEST_F(RadioPlayerTurnTest, aPauseInTheTurnOfThePatientRetryWins)
{
    radio->play(uno, list);
    failRun();
    const auto items = player.items.size();
    radio->pause();
    radio->resume();
    radio->pause();
    clock.advance(1h);
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    EXPECT_EQ(player.items.size(), items + 1);
}

TEST_F(RadioPlayerTurnTest, aSoundInTheTurnOfTheConnectTimeoutWins)
{
    const Task sound = clock.after(8s, [this] { hear(); });
    radio->play(uno, list);
    clock.advance(8s);
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
}

TEST_F(RadioPlayerTurnTest, aSoundInTheTurnOfTheStallWatchdogWins)
{
    hear(uno);
    const Task sound = clock.after(8s, [this] { player.tellTimeControl(TimeControl::Playing); });
    player.tellTimeControl(TimeControl::Waiting);
    clock.advance(8s);
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
}

TEST_F(RadioPlayerSkipTest, anotherStationChosenMeanwhileStays)
{
    repository.setAutoSkipUnreachable(true);
    radio->play(uno, list);
    fail();
    clock.advance(200ms);
    radio->play(tre, list);
    const AudioItemId chosen = itemId();
    clock.advance(1s);
    EXPECT_EQ(radio->station(), tre);
    EXPECT_EQ(itemId(), chosen);
}

TEST_F(RadioPlayerSkipTest, nextPressedMeanwhileIsNotDoubled)
{
    repository.setAutoSkipUnreachable(true);
    radio->play(uno, list);
    fail();
    clock.advance(200ms);
    radio->next();
    const AudioItemId chosen = itemId();
    clock.advance(1s);
    EXPECT_EQ(radio->station(), due);
    EXPECT_EQ(itemId(), chosen);
}

TEST_F(RadioPlayerSkipTest, theSameStationChosenMeanwhileIsSkippedAllTheSame)
{
    repository.setAutoSkipUnreachable(true);
    radio->play(uno, list);
    fail();
    clock.advance(200ms);
    radio->play(uno, list);
    clock.advance(200ms);
    EXPECT_EQ(radio->station(), due);
}

TEST_F(RadioPlayerSkipTest, aPauseMeanwhileDoesNotStopIt)
{
    repository.setAutoSkipUnreachable(true);
    radio->play(uno, list);
    fail();
    clock.advance(200ms);
    radio->pause();
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    clock.advance(200ms);
    EXPECT_EQ(radio->station(), due);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
}

TEST_F(RadioPlayerSkipTest, theNetworkComingBackMeanwhileDoesNotStopIt)
{
    repository.setAutoSkipUnreachable(true);
    radio->play(uno, list);
    fail();
    network.changed(false);
    network.changed(true);
    EXPECT_EQ(url(), uno.streamUrl);
    clock.advance(400ms);
    EXPECT_EQ(url(), due.streamUrl);
    EXPECT_EQ(player.observers(itemId()), 1u);
}

TEST_F(RadioPlayerEndTest, nothingThatWasUnderWayTouchesARadioThatIsGone)
{
    repository.setAutoSkipUnreachable(true);
    hear(uno);
    sleep.sleep();
    sleep.handlers.didWake();
    radio->play(due, list);
    network.changed(false);
    network.changed(true);
    fail();
    coordinator.setResumeLast({});
    const auto handlers = sleep.handlers;
    radio.reset();
    player.calls.clear();
    announcements = 0;
    player.tellTimeControl(TimeControl::Playing);
    network.changed(false);
    network.changed(true);
    handlers.willSleep(std::make_shared<int>(0));
    handlers.didWake();
    artworkExecutor.runAll();
    clock.advance(1h);
    EXPECT_TRUE(player.calls.isEmpty());
    EXPECT_EQ(announcements, 0);
}

TEST_F(RadioPlayerEndTest, aRadioThatIsGoneHearsNothingOfItsItem)
{
    hear(uno);
    const AudioItemId item = itemId();
    radio.reset();
    EXPECT_EQ(player.observers(item), 0u);
    EXPECT_EQ(clock.pendingTimers(), 0u);
}

TEST_F(RadioPlayerListenerTest, aPauseByWhoeverHearsOfARetryEndsIt)
{
    radio->play(uno, list);
    QObject::connect(&broadcasts, &Broadcasts::radioPlaybackDidChange, radio.get(), [this] {
        if (is<Connecting>(radio->state()))
            radio->pause();
    });
    fail();
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    clock.advance(1h);
    EXPECT_EQ(player.items.size(), 1u);
}

TEST_F(RadioPlayerListenerTest, aStationChosenByWhoeverHearsOfARetryIsNotReconnectedByIt)
{
    radio->play(uno, list);
    QObject::connect(&broadcasts, &Broadcasts::radioPlaybackDidChange, radio.get(), [this] {
        if (radio->state() == PlaybackState(Connecting{ 2, 5 }))
            radio->play(due, list);
    });
    fail();
    clock.advance(7s);
    EXPECT_EQ(url(), due.streamUrl);
    EXPECT_EQ(player.items.size(), 2u);
}

TEST_F(RadioPlayerListenerTest, aStationChosenByWhoeverHearsOfAGiveUpIsNotReconnectedByIt)
{
    radio->play(uno, list);
    QObject::connect(&broadcasts, &Broadcasts::radioPlaybackDidChange, radio.get(), [this] {
        if (is<Failed>(radio->state()))
            hear(due);
    });
    failRun();
    const auto items = player.items.size();
    EXPECT_EQ(url(), due.streamUrl);
    listen(60s);
    EXPECT_EQ(player.items.size(), items);
}

TEST_F(RadioPlayerListenerTest, aStationChosenByWhoeverHearsOfADrySpellHasItsOwnTime)
{
    hear(uno);
    QObject::connect(&broadcasts, &Broadcasts::radioPlaybackDidChange, radio.get(), [this] {
        if (is<Buffering>(radio->state()))
            radio->play(due, list);
    });
    player.tellTimeControl(TimeControl::Waiting);
    // Its connect timeout, and nothing else.
    EXPECT_EQ(clock.pendingTimers(), 1u);
}

}
