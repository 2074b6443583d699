// SPDX-License-Identifier: GPL-3.0-or-later
// The machine sleeps and wakes.
#include "RadioWorld.h"

namespace velarin::test {

using RadioPlayerSleepTest = RadioPlayerTest;

class RadioPlayerSleepWhileSoundingTest : public RadioPlayerTest, public testing::WithParamInterface<QString>
{
};

TEST_P(RadioPlayerSleepWhileSoundingTest, pausesAndComesBackTwoSecondsAfterWaking)
{
    enterState(*this, GetParam());
    takeLog();
    sleep.sleep();
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    EXPECT_EQ(takeLog(), (QStringList{ u"interruption: Il Mac va in stop: pausa"_s, u"remote: Pausa richiesta"_s }));
    clock.advance(30s);
    sleep.handlers.didWake();
    EXPECT_EQ(takeLog(), QStringList{ u"interruption: Il Mac si è risvegliato: riprendo"_s });
    clock.advance(2s - 1ms);
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    clock.advance(1ms);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
}

INSTANTIATE_TEST_SUITE_P(
    States, RadioPlayerSleepWhileSoundingTest, testing::Values(u"connecting"_s, u"buffering"_s, u"playing"_s));

class RadioPlayerSleepWhileSilentTest : public RadioPlayerTest, public testing::WithParamInterface<QString>
{
};

TEST_P(RadioPlayerSleepWhileSilentTest, leavesNothingToResume)
{
    enterState(*this, GetParam());
    const PlaybackState before = radio->state();
    takeLog();
    const auto isDelayed = sleep.sleep();
    EXPECT_FALSE(isDelayed());
    sleep.handlers.didWake();
    clock.advance(10s);
    EXPECT_EQ(radio->state(), before);
    EXPECT_TRUE(takeLog().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(States, RadioPlayerSleepWhileSilentTest, testing::Values(u"idle"_s, u"paused"_s, u"failed"_s));

TEST_F(RadioPlayerSleepTest, aVeryShortSleepGoesOnInPlace)
{
    hear(uno);
    const AudioItemId before = itemId();
    sleep.sleep();
    clock.advance(17s);
    sleep.handlers.didWake();
    clock.advance(2s);
    EXPECT_EQ(itemId(), before);
    EXPECT_EQ(radio->state(), PlaybackState(Buffering{}));
}

TEST_F(RadioPlayerSleepTest, theTwoSecondsAfterWakingCountForTheLimit)
{
    hear(uno);
    const AudioItemId before = itemId();
    sleep.sleep();
    clock.advance(18s);
    sleep.handlers.didWake();
    clock.advance(2s);
    EXPECT_NE(itemId(), before);
}

TEST_F(RadioPlayerSleepTest, thirtySecondsOfSleepReconnect)
{
    hear(uno);
    const AudioItemId before = itemId();
    sleep.sleep();
    clock.advance(30s);
    sleep.handlers.didWake();
    clock.advance(2s);
    EXPECT_NE(itemId(), before);
}

TEST_F(RadioPlayerSleepTest, sleepEndsAnAlarm)
{
    hear(uno);
    sleep.sleep();
    EXPECT_EQ(alarm.endings.back(), u"pausa"_s);
}

TEST_F(RadioPlayerSleepTest, theMachineWaitsUntilThePlayerIsSilent)
{
    hear(uno);
    const auto isDelayed = sleep.sleep();
    EXPECT_TRUE(isDelayed());
    clock.advance(1s);
    EXPECT_TRUE(isDelayed());
    player.tellTimeControl(TimeControl::Paused);
    EXPECT_FALSE(isDelayed());
}

TEST_F(RadioPlayerSleepTest, theMachineWaitsThreeSecondsAtTheLongest)
{
    hear(uno);
    const auto isDelayed = sleep.sleep();
    clock.advance(3s - 1ms);
    EXPECT_TRUE(isDelayed());
    clock.advance(1ms);
    EXPECT_FALSE(isDelayed());
}

TEST_F(RadioPlayerSleepTest, otherReportsDoNotLetTheMachineSleep)
{
    hear(uno);
    const auto isDelayed = sleep.sleep();
    player.tellTimeControl(TimeControl::Waiting);
    player.tellTimeControl(TimeControl::Playing);
    EXPECT_TRUE(isDelayed());
}

TEST_F(RadioPlayerSleepTest, theMachineMaySleepOnceTheRadioIsGone)
{
    hear(uno);
    const auto isDelayed = sleep.sleep();
    radio.reset();
    EXPECT_FALSE(isDelayed());
}

TEST_F(RadioPlayerSleepTest, wakingTwiceResumesOnce)
{
    hear(uno);
    sleep.sleep();
    clock.advance(30s);
    sleep.handlers.didWake();
    sleep.handlers.didWake();
    const auto items = player.items.size();
    clock.advance(10s);
    EXPECT_EQ(player.items.size(), items + 1);
}

TEST_F(RadioPlayerSleepTest, aSleepDuringThePatientWaitKeepsTheWait)
{
    radio->play(uno, list);
    failRun();
    const auto isDelayed = sleep.sleep();
    EXPECT_FALSE(isDelayed());
    takeLog();
    clock.advance(14s);
    sleep.handlers.didWake();
    EXPECT_TRUE(takeLog().isEmpty());
    clock.advance(1s);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
}

TEST_F(RadioPlayerSleepTest, aSleepDuringTheWaitForTheNetworkKeepsTheWait)
{
    radio->play(uno, list);
    network.changed(false);
    fail();
    sleep.sleep();
    clock.advance(1h);
    sleep.handlers.didWake();
    network.changed(true);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
}

TEST_F(RadioPlayerSleepTest, wakingWithoutANetworkWaitsForIt)
{
    hear(uno);
    sleep.sleep();
    network.changed(false);
    clock.advance(1h);
    sleep.handlers.didWake();
    clock.advance(2s);
    fail(chainOf(u"resolve"_s, 6));
    EXPECT_EQ(failureKind(), Kind::offline);
    network.changed(true);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
}

TEST_F(RadioPlayerSleepTest, wakingGoesOnTakingTheOutput)
{
    hear(uno);
    sleep.sleep();
    coordinator.activate(Source::podcast);
    sleep.handlers.didWake();
    clock.advance(2s);
    EXPECT_EQ(coordinator.active(), Source::radio);
}

TEST_F(RadioPlayerSleepTest, aPauseAfterWakingDoesNotStopTheResume)
{
    hear(uno);
    sleep.sleep();
    clock.advance(30s);
    sleep.handlers.didWake();
    radio->pause();
    clock.advance(2s);
    // Nobody keeps the task of the wake; the pause is younger than 20 seconds, so it goes on in place.
    EXPECT_EQ(radio->state(), PlaybackState(Buffering{}));
}

}
