// SPDX-License-Identifier: GPL-3.0-or-later
// What the reports of the player's time control mean, and the two watchdogs for a silence that nobody tells.
#include "RadioWorld.h"

#include <limits>

namespace velarin::test {

using RadioPlayerWatchdogsTest = RadioPlayerTest;

namespace {

const QString silentStop = u"network: Nessun audio da 5 secondi mentre la radio risultava in diretta: riconnetto"_s;
const QString timedOut = u"network: Tentativo 1 fallito (timeout)"_s;

}

TEST_F(RadioPlayerWatchdogsTest, soundMakesTheRadioPlayAndSaysSo)
{
    radio->play(uno, list);
    takeLog();
    announcements = 0;
    hear();
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
    EXPECT_EQ(takeLog(), QStringList{ u"playback: In onda: Uno"_s });
    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(shown().nowPlaying->rate, 1.0);
}

TEST_F(RadioPlayerWatchdogsTest, soundToldTwiceIsNoNews)
{
    hear(uno);
    takeLog();
    announcements = 0;
    player.tellTimeControl(TimeControl::Playing);
    EXPECT_TRUE(takeLog().isEmpty());
    EXPECT_EQ(announcements, 0);
}

TEST_F(RadioPlayerWatchdogsTest, nothingHappensWithoutTheWishForSound)
{
    hear(uno);
    radio->pause();
    takeLog();
    announcements = 0;
    for (const TimeControl control : { TimeControl::Playing, TimeControl::Waiting, TimeControl::Paused })
        player.tellTimeControl(control);
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    EXPECT_TRUE(takeLog().isEmpty());
    EXPECT_EQ(announcements, 0);
    EXPECT_EQ(clock.pendingTimers(), 0u);
}

TEST_F(RadioPlayerWatchdogsTest, nothingHappensBeforeAStationIsChosen)
{
    player.tellTimeControl(TimeControl::Playing);
    EXPECT_EQ(radio->state(), PlaybackState(Idle{}));
}

TEST_F(RadioPlayerWatchdogsTest, waitingBeforeTheFirstSoundChangesNothing)
{
    radio->play(uno, list);
    takeLog();
    player.tellTimeControl(TimeControl::Waiting);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
    EXPECT_TRUE(takeLog().isEmpty());
}

TEST_F(RadioPlayerWatchdogsTest, aRetryBeginsBeforeTheFirstSoundAgain)
{
    hear(uno);
    fail();
    clock.advance(1s);
    player.tellTimeControl(TimeControl::Waiting);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
}

TEST_F(RadioPlayerWatchdogsTest, waitingAfterSoundIsBuffering)
{
    hear(uno);
    takeLog();
    player.tellTimeControl(TimeControl::Waiting);
    EXPECT_EQ(radio->state(), PlaybackState(Buffering{}));
    EXPECT_EQ(takeLog(), QStringList{ u"network: Buffer vuoto su Uno: attendo (qualità piena)"_s });
}

TEST_F(RadioPlayerWatchdogsTest, bufferingIsAnnouncedButPublishesNoNowPlayingData)
{
    hear(uno);
    const auto published = controls.published.size();
    announcements = 0;
    player.tellTimeControl(TimeControl::Waiting);
    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(controls.published.size(), published);
    EXPECT_EQ(shown().nowPlaying->rate, 1.0);
    EXPECT_EQ(shown().state, NowPlayingState::Playing);
}

TEST_F(RadioPlayerWatchdogsTest, bufferingIsLoggedOncePerDrySpell)
{
    hear(uno);
    takeLog();
    player.tellTimeControl(TimeControl::Waiting);
    player.tellTimeControl(TimeControl::Waiting);
    EXPECT_EQ(takeLog().size(), 1);
}

TEST_F(RadioPlayerWatchdogsTest, aDrySpellIsGivenTheDefaultTime)
{
    hear(uno);
    player.tellTimeControl(TimeControl::Waiting);
    takeLog();
    clock.advance(8s - 1ms);
    EXPECT_TRUE(takeLog().isEmpty());
    clock.advance(1ms);
    EXPECT_TRUE(takeLog().contains(timedOut));
}

TEST_F(RadioPlayerWatchdogsTest, eachReportOfADrySpellBeginsTheWaitAnew)
{
    hear(uno);
    player.tellTimeControl(TimeControl::Waiting);
    clock.advance(7s);
    player.tellTimeControl(TimeControl::Waiting);
    clock.advance(7s);
    player.tellStalled();
    clock.advance(7s);
    EXPECT_EQ(radio->state(), PlaybackState(Buffering{}));
    clock.advance(1s);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
}

TEST_F(RadioPlayerWatchdogsTest, atTheLowestTierADrySpellMayLastFortyEightSeconds)
{
    repository.setConnectTimeout(12);
    radio->play(uno, list);
    fail();
    clock.advance(1s);
    fail();
    clock.advance(2s);
    fail();
    clock.advance(3s);
    hear();
    player.tellTimeControl(TimeControl::Waiting);
    clock.advance(48s - 1ms);
    EXPECT_EQ(radio->state(), PlaybackState(Buffering{}));
    clock.advance(1ms);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
}

TEST_F(RadioPlayerWatchdogsTest, soundEndsTheDrySpell)
{
    hear(uno);
    player.tellTimeControl(TimeControl::Waiting);
    clock.advance(7s);
    player.tellTimeControl(TimeControl::Playing);
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
    listen(10s);
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
}

TEST_F(RadioPlayerWatchdogsTest, aStallWatchdogThatFindsSoundLeavesItAlone)
{
    hear(uno);
    player.tellStalled();
    listen(20s);
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
}

TEST_F(RadioPlayerWatchdogsTest, aPlayerThatStopsByItselfIsReconnectedAfterTwoSeconds)
{
    hear(uno);
    takeLog();
    announcements = 0;
    player.tellTimeControl(TimeControl::Paused);
    EXPECT_EQ(takeLog(), QStringList{ u"network: Audio fermo senza errore su Uno: riconnetto"_s });
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
    EXPECT_EQ(announcements, 0);
    clock.advance(2s - 1ms);
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
    clock.advance(1ms);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
    EXPECT_TRUE(takeLog().contains(timedOut));
}

TEST_F(RadioPlayerWatchdogsTest, aPlayerThatStopsWhileBufferingIsReconnectedAfterTwoSeconds)
{
    hear(uno);
    player.tellTimeControl(TimeControl::Waiting);
    player.tellTimeControl(TimeControl::Paused);
    EXPECT_EQ(radio->state(), PlaybackState(Buffering{}));
    clock.advance(2s);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
}

TEST_F(RadioPlayerWatchdogsTest, aPlayerThatStopsBeforeTheFirstSoundHasItsConnectTimeout)
{
    radio->play(uno, list);
    takeLog();
    player.tellTimeControl(TimeControl::Paused);
    clock.advance(2s);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
    EXPECT_TRUE(takeLog().isEmpty());
}

TEST_F(RadioPlayerWatchdogsTest, soundWithinTheTwoSecondsStopsTheWatchdog)
{
    hear(uno);
    player.tellTimeControl(TimeControl::Paused);
    clock.advance(1s);
    player.tellTimeControl(TimeControl::Playing);
    listen(3s);
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
}

TEST_F(RadioPlayerWatchdogsTest, aClockThatStandsStillIsASilentStop)
{
    hear(uno);
    takeLog();
    clock.advance(5s);
    EXPECT_EQ(
        takeLog(), (QStringList{ silentStop,
                       u"playback: Linea debole: riduco a qualità alta per non interrompere l'audio"_s, timedOut }));
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
}

TEST_F(RadioPlayerWatchdogsTest, aClockThatMovedHalfASecondIsSlowAndOneThatMovedLessHasStopped)
{
    hear(uno);
    player.time += 0.5;
    clock.advance(5s);
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
    player.time += 0.49;
    clock.advance(5s);
    EXPECT_TRUE(takeLog().contains(silentStop));
}

TEST_F(RadioPlayerWatchdogsTest, aClockThatNobodyKnowsIsASilentStop)
{
    hear(uno);
    player.time = std::numeric_limits<double>::quiet_NaN();
    clock.advance(5s);
    EXPECT_TRUE(takeLog().contains(silentStop));
}

TEST_F(RadioPlayerWatchdogsTest, theClockIsLookedAtAgainAndAgain)
{
    hear(uno);
    listen(60s);
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
    clock.advance(5s);
    EXPECT_TRUE(takeLog().contains(silentStop));
}

TEST_F(RadioPlayerWatchdogsTest, aPausedPlayerWhoseClockMovedIsASilentStop)
{
    hear(uno);
    player.control = TimeControl::Paused;
    player.time += 5.0;
    clock.advance(5s);
    EXPECT_TRUE(takeLog().contains(silentStop));
}

TEST_F(RadioPlayerWatchdogsTest, bufferingEndsTheWatchOverTheClock)
{
    repository.setConnectTimeout(12);
    hear(uno);
    player.tellTimeControl(TimeControl::Waiting);
    takeLog();
    clock.advance(11s);
    EXPECT_TRUE(takeLog().isEmpty());
}

TEST_F(RadioPlayerWatchdogsTest, soundAfterBufferingWatchesTheClockFromThere)
{
    hear(uno);
    player.time = 4.0;
    clock.advance(4s);
    player.tellTimeControl(TimeControl::Waiting);
    clock.advance(2s);
    player.tellTimeControl(TimeControl::Playing);
    takeLog();
    player.time = 4.4;
    clock.advance(5s - 1ms);
    EXPECT_TRUE(takeLog().isEmpty());
    clock.advance(1ms);
    // 0.4 seconds since the sound came back, though 4.4 since it began.
    EXPECT_TRUE(takeLog().contains(silentStop));
}

TEST_F(RadioPlayerWatchdogsTest, thereIsOneWatchOverTheClock)
{
    hear(uno);
    player.tellTimeControl(TimeControl::Playing);
    player.tellTimeControl(TimeControl::Playing);
    EXPECT_EQ(clock.pendingTimers(), 1u);
}

}
