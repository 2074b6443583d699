// SPDX-License-Identifier: GPL-3.0-or-later
// Pause, resume, stop, and the toggle between them.
#include "RadioWorld.h"

namespace velarin::test {

TEST_F(RadioPlayerTest, pauseWithoutAStationDoesNothing)
{
    radio->pause();
    EXPECT_EQ(radio->state(), PlaybackState(Idle{}));
    EXPECT_TRUE(takeLog().isEmpty());
    EXPECT_TRUE(alarm.endings.isEmpty());
    EXPECT_EQ(announcements, 0);
}

TEST_F(RadioPlayerTest, pauseKeepsTheItemAndSaysSo)
{
    hear(uno);
    takeLog();
    player.calls.clear();
    radio->pause();
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    EXPECT_EQ(player.calls, QStringList{ u"pause"_s });
    EXPECT_TRUE(player.item);
    EXPECT_EQ(takeLog(), QStringList{ u"remote: Pausa richiesta"_s });
    EXPECT_EQ(alarm.endings.back(), u"pausa"_s);
}

TEST_F(RadioPlayerTest, pauseEndsEveryTimer)
{
    fail();
    hear(uno);
    fail();
    clock.advance(1s);
    hear();
    radio->pause();
    EXPECT_EQ(clock.pendingTimers(), 0u);
}

TEST_F(RadioPlayerTest, aPauseJustUnderTwentySecondsGoesOnInPlace)
{
    hear(uno);
    const AudioItemId before = itemId();
    radio->pause();
    clock.advance(19'900ms);
    player.calls.clear();
    radio->resume();
    EXPECT_EQ(itemId(), before);
    EXPECT_EQ(player.calls, QStringList{ u"play"_s });
    EXPECT_EQ(radio->state(), PlaybackState(Buffering{}));
}

TEST_F(RadioPlayerTest, aPauseOfTwentySecondsReconnectsAtTheLiveEdge)
{
    hear(uno);
    const AudioItemId before = itemId();
    radio->pause();
    clock.advance(20s);
    radio->resume();
    EXPECT_NE(itemId(), before);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
}

TEST_F(RadioPlayerTest, aWallClockThatJumpsDoesNotStretchThePause)
{
    hear(uno);
    const AudioItemId before = itemId();
    radio->pause();
    clock.jumpTo(clock.now().addDays(1));
    clock.advance(10s);
    radio->resume();
    EXPECT_EQ(itemId(), before);
}

TEST_F(RadioPlayerTest, goingOnInPlaceIsGuardedByTheStallWatchdog)
{
    hear(uno);
    radio->pause();
    player.tellTimeControl(TimeControl::Paused);
    radio->resume();
    takeLog();
    clock.advance(8s);
    EXPECT_TRUE(takeLog().contains(u"network: Tentativo 1 fallito (timeout)"_s));
}

TEST_F(RadioPlayerTest, goingOnInPlaceIsPublished)
{
    hear(uno);
    radio->pause();
    const auto published = controls.published.size();
    announcements = 0;
    radio->resume();
    EXPECT_EQ(controls.published.size(), published + 1);
    EXPECT_EQ(announcements, 1);
}

TEST_F(RadioPlayerTest, aPauseWhileConnectingLeavesAHalfLoadedItemAndResumeStartsAnew)
{
    radio->play(uno, list);
    const AudioItemId before = itemId();
    radio->pause();
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    EXPECT_EQ(player.item->id, before);
    radio->resume();
    EXPECT_NE(itemId(), before);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
}

TEST_F(RadioPlayerTest, aPausedItemThatBrokeIsStartedAnew)
{
    hear(uno);
    const AudioItemId before = itemId();
    radio->pause();
    fail(chainOf(u"closed"_s, 0));
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    radio->resume();
    EXPECT_NE(itemId(), before);
}

TEST_F(RadioPlayerTest, aPauseDuringARetryHasNoItemAndResumeStartsAnew)
{
    radio->play(uno, list);
    fail();
    radio->pause();
    EXPECT_FALSE(player.item);
    radio->resume();
    EXPECT_TRUE(player.item);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
}

class RadioPlayerSoundingTest : public RadioPlayerTest, public testing::WithParamInterface<QString>
{
};

TEST_P(RadioPlayerSoundingTest, resumeDoesNothing)
{
    enterState(*this, GetParam());
    const PlaybackState before = radio->state();
    const AudioItemId item = itemId();
    player.calls.clear();
    radio->resume();
    EXPECT_EQ(radio->state(), before);
    EXPECT_EQ(itemId(), item);
    EXPECT_TRUE(player.calls.isEmpty());
}

TEST_P(RadioPlayerSoundingTest, togglePauses)
{
    enterState(*this, GetParam());
    EXPECT_TRUE(radio->isSounding());
    radio->togglePlayback();
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
}

INSTANTIATE_TEST_SUITE_P(
    States, RadioPlayerSoundingTest, testing::Values(u"connecting"_s, u"buffering"_s, u"playing"_s));

class RadioPlayerSilentTest : public RadioPlayerTest, public testing::WithParamInterface<QString>
{
};

TEST_P(RadioPlayerSilentTest, toggleResumes)
{
    fillCatalogue(list);
    enterState(*this, GetParam());
    EXPECT_FALSE(radio->isSounding());
    player.calls.clear();
    radio->togglePlayback();
    EXPECT_NE(toText(radio->state()), GetParam());
    EXPECT_EQ(coordinator.active(), Source::radio);
}

INSTANTIATE_TEST_SUITE_P(States, RadioPlayerSilentTest, testing::Values(u"idle"_s, u"paused"_s, u"failed"_s));

TEST_F(RadioPlayerTest, resumeAfterAFailureStartsTheStationAnew)
{
    enterState(*this, u"failed"_s);
    takeLog();
    radio->resume();
    // It fails again, since it has no address; but it was tried.
    EXPECT_TRUE(takeLog().contains(u"error: Il formato dello stream di Uno non è supportato."_s));
}

TEST_F(RadioPlayerTest, stopKeepsTheStationAndResumeReconnectsIt)
{
    hear(uno);
    radio->stop();
    EXPECT_EQ(radio->state(), PlaybackState(Idle{}));
    EXPECT_EQ(radio->station(), uno);
    EXPECT_EQ(radio->queue(), list);
    EXPECT_FALSE(player.item);
    radio->resume();
    EXPECT_EQ(url(), uno.streamUrl);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
}

TEST_F(RadioPlayerTest, stopEndsTheTimersTheObserversAndTheAlarm)
{
    hear(uno);
    const AudioItemId before = itemId();
    player.calls.clear();
    radio->stop();
    EXPECT_EQ(clock.pendingTimers(), 0u);
    EXPECT_EQ(player.observers(before), 0u);
    EXPECT_EQ(player.calls, (QStringList{ u"pause"_s, u"no item"_s }));
    EXPECT_EQ(alarm.endings.back(), u"stop"_s);
}

TEST_F(RadioPlayerTest, stopDuringARetryEndsIt)
{
    radio->play(uno, list);
    fail();
    radio->stop();
    clock.advance(60s);
    EXPECT_EQ(radio->state(), PlaybackState(Idle{}));
    EXPECT_EQ(player.items.size(), 1u);
}

TEST_F(RadioPlayerTest, stopKeepsTheOutput)
{
    hear(uno);
    radio->stop();
    EXPECT_EQ(coordinator.active(), Source::radio);
}

TEST_F(RadioPlayerTest, resumeWithNothingKnownDoesNothing)
{
    radio->resume();
    EXPECT_EQ(radio->state(), PlaybackState(Idle{}));
    EXPECT_EQ(radio->station(), std::nullopt);
    EXPECT_TRUE(player.calls.isEmpty());
}

TEST_F(RadioPlayerTest, resumeWithoutAStationBringsBackTheLastOne)
{
    fillCatalogue(list);
    repository.setLastPlayed(due.id);
    radio->resume();
    EXPECT_EQ(radio->station()->id, due.id);
    EXPECT_EQ(radio->queue().at(radio->queueIndex()).id, due.id);
    EXPECT_EQ(radio->queueSize(), 3);
}

TEST_F(RadioPlayerTest, resumeTakesTheOutput)
{
    hear(uno);
    radio->pause();
    coordinator.activate(Source::podcast);
    radio->resume();
    EXPECT_EQ(coordinator.active(), Source::radio);
}

TEST_F(RadioPlayerTest, resumeLastSoundsWithoutTakingTheOutputAndShowsNothing)
{
    fillCatalogue(list);
    repository.setLastPlayed(due.id);
    radio->resumeLast();
    hear();
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
    EXPECT_EQ(coordinator.active(), Source::none);
    EXPECT_TRUE(controls.published.empty());
    EXPECT_GT(announcements, 0);
}

TEST_F(RadioPlayerTest, resumeLastWithNothingKnownDoesNothing)
{
    radio->resumeLast();
    EXPECT_EQ(radio->station(), std::nullopt);
    EXPECT_EQ(announcements, 0);
}

}
