// SPDX-License-Identifier: GPL-3.0-or-later
// The network goes and comes.
#include "RadioWorld.h"

namespace velarin::test {

using RadioPlayerNetworkTest = RadioPlayerTest;

TEST_F(RadioPlayerNetworkTest, losingTheNetworkDoesNothingByItself)
{
    hear(uno);
    takeLog();
    announcements = 0;
    network.changed(false);
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
    EXPECT_TRUE(takeLog().isEmpty());
    EXPECT_EQ(announcements, 0);
}

TEST_F(RadioPlayerNetworkTest, theReturnOfTheNetworkBringsTheStationBack)
{
    hear(uno);
    network.changed(false);
    player.tellFailedToPlayToEnd(chainOf(u"reset"_s, 104));
    EXPECT_EQ(failureKind(), Kind::offline);
    network.changed(true);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
    EXPECT_EQ(url(), uno.streamUrl);
}

TEST_F(RadioPlayerNetworkTest, withoutReconnectionTheReturnOfTheNetworkBringsNothingBack)
{
    repository.setAutoReconnect(false);
    radio->play(uno, list);
    network.changed(false);
    fail();
    network.changed(true);
    EXPECT_EQ(failureKind(), Kind::offline);
    EXPECT_FALSE(player.item);
}

TEST_F(RadioPlayerNetworkTest, theReturnOfTheNetworkCutsThePatientWaitShort)
{
    radio->play(uno, list);
    failRun();
    network.changed(false);
    network.changed(true);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
    EXPECT_TRUE(player.item);
    const auto items = player.items.size();
    hear();
    listen(30s);
    EXPECT_EQ(player.items.size(), items);
}

TEST_F(RadioPlayerNetworkTest, aFailureThatIsFinalDoesNotComeBackWithTheNetwork)
{
    radio->play(uno, list);
    fail(chainOf(u"http"_s, 404));
    clock.advance(1s);
    fail(chainOf(u"http"_s, 404));
    network.changed(false);
    network.changed(true);
    EXPECT_EQ(failureKind(), Kind::notFound);
    EXPECT_FALSE(player.item);
}

TEST_F(RadioPlayerNetworkTest, aPauseDuringTheWaitForTheNetworkEndsIt)
{
    radio->play(uno, list);
    network.changed(false);
    fail();
    radio->pause();
    network.changed(true);
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    EXPECT_FALSE(player.item);
}

TEST_F(RadioPlayerNetworkTest, aStopDuringTheWaitForTheNetworkEndsIt)
{
    radio->play(uno, list);
    network.changed(false);
    fail();
    radio->stop();
    network.changed(true);
    EXPECT_EQ(radio->state(), PlaybackState(Idle{}));
}

TEST_F(RadioPlayerNetworkTest, theReturnOfTheNetworkCutsARetryShort)
{
    radio->play(uno, list);
    fail();
    clock.advance(1s);
    fail();
    network.changed(false);
    const auto items = player.items.size();
    network.changed(true);
    EXPECT_EQ(player.items.size(), items + 1);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
    clock.advance(5s);
    EXPECT_EQ(player.items.size(), items + 1);
}

TEST_F(RadioPlayerNetworkTest, theReturnOfTheNetworkClearsTheFailures)
{
    radio->play(uno, list);
    fail();
    clock.advance(1s);
    fail();
    network.changed(false);
    network.changed(true);
    fail();
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
}

TEST_F(RadioPlayerNetworkTest, theReturnOfTheNetworkDuringAnAttemptBeginsItAnew)
{
    radio->play(uno, list);
    const AudioItemId former = itemId();
    network.changed(false);
    network.changed(true);
    EXPECT_NE(itemId(), former);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
}

TEST_F(RadioPlayerNetworkTest, theReturnOfTheNetworkLeavesTheFormerItemsObserversAttached)
{
    radio->play(uno, list);
    const AudioItemId former = itemId();
    network.changed(false);
    network.changed(true);
    EXPECT_EQ(player.observers(former), 1u);
    EXPECT_EQ(player.observers(itemId()), 1u);
    player.tellStatus(ItemStatus::Failed, {}, former);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
    EXPECT_EQ(player.observers(former), 0u);
}

TEST_F(RadioPlayerNetworkTest, theReturnOfTheNetworkLeavesTheConnectTimeoutRunning)
{
    radio->play(uno, list);
    clock.advance(5s);
    network.changed(false);
    network.changed(true);
    clock.advance(3s - 1ms);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
    // Eight seconds after the first attempt, three after the second.
    clock.advance(1ms);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
}

TEST_F(RadioPlayerNetworkTest, theFormerConnectTimeoutDoesNothingOnceThereIsSound)
{
    radio->play(uno, list);
    clock.advance(5s);
    network.changed(false);
    network.changed(true);
    hear();
    listen(60s);
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
}

TEST_F(RadioPlayerNetworkTest, theFormerConnectTimeoutDoesNothingInAnotherSession)
{
    radio->play(uno, list);
    clock.advance(5s);
    network.changed(false);
    network.changed(true);
    radio->play(due, list);
    clock.advance(7s);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
}

TEST_F(RadioPlayerNetworkTest, theReturnOfTheNetworkKeepsTheSecondAddress)
{
    radio->play(withAlternate(uno), list);
    fail(chainOf(u"http"_s, 404));
    network.changed(false);
    network.changed(true);
    EXPECT_EQ(url(), u"http://radio.example/uno-2"_s);
}

class RadioPlayerNetworkBackTest : public RadioPlayerTest, public testing::WithParamInterface<QString>
{
};

TEST_P(RadioPlayerNetworkBackTest, changesNothingInEveryOtherState)
{
    enterState(*this, GetParam());
    const PlaybackState before = radio->state();
    const auto items = player.items.size();
    network.changed(false);
    network.changed(true);
    EXPECT_EQ(radio->state(), before);
    EXPECT_EQ(player.items.size(), items);
}

INSTANTIATE_TEST_SUITE_P(States, RadioPlayerNetworkBackTest,
    testing::Values(u"idle"_s, u"buffering"_s, u"playing"_s, u"paused"_s, u"failed"_s));

TEST_F(RadioPlayerNetworkTest, onlineWhileOnlineDoesNothing)
{
    radio->play(uno, list);
    const AudioItemId before = itemId();
    network.changed(true);
    network.changed(true);
    EXPECT_EQ(itemId(), before);
}

TEST_F(RadioPlayerNetworkTest, offlineToldTwiceIsOneOffline)
{
    radio->play(uno, list);
    network.changed(false);
    network.changed(false);
    const auto items = player.items.size();
    network.changed(true);
    network.changed(true);
    EXPECT_EQ(player.items.size(), items + 1);
}

TEST_F(RadioPlayerNetworkTest, theMachineCountsAsOnlineBeforeTheFirstVerdict)
{
    radio->play(uno, list);
    fail();
    EXPECT_TRUE(takeLog().contains(u"network: Tentativo 1 fallito (unknown)"_s));
}

}
