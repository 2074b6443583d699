// SPDX-License-Identifier: GPL-3.0-or-later
// How one attempt is built, and what its item can tell.
#include "RadioWorld.h"

namespace velarin::test {

using RadioPlayerConnectTest = RadioPlayerTest;

TEST_F(RadioPlayerConnectTest, theFirstAttemptIsOneOfFive)
{
    radio->play(uno, list);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
}

TEST_F(RadioPlayerConnectTest, withoutReconnectionItIsTheOnlyOne)
{
    repository.setAutoReconnect(false);
    radio->play(uno, list);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 1 }));
}

TEST_F(RadioPlayerConnectTest, theItemAsksForTheStationLive)
{
    radio->play(uno, list);
    EXPECT_EQ(url(), uno.streamUrl);
    EXPECT_EQ(player.item->kind, AudioItemKind::Live);
}

TEST_F(RadioPlayerConnectTest, theItemCarriesExactlyTwoHeaders)
{
    radio->play(uno, list);
    const QList<QPair<QByteArray, QByteArray>> headers{ { "User-Agent", "Velarin/1.0.1 (macOS; AVPlayer)" },
        { "Icy-MetaData", "1" } };
    EXPECT_EQ(player.item->headers, headers);
}

TEST_F(RadioPlayerConnectTest, theItemIsLoadedAndThenPlayed)
{
    radio->play(uno, list);
    EXPECT_EQ(player.calls, (QStringList{ u"item"_s, u"play"_s }));
    EXPECT_EQ(player.observers(itemId()), 1u);
}

TEST_F(RadioPlayerConnectTest, theItemAsksForWhatTheTierAllows)
{
    radio->play(uno, list);
    EXPECT_EQ(player.item->forwardBufferDuration, 0.0);
    EXPECT_EQ(player.item->peakBitRate, 0);
    fail();
    clock.advance(1s);
    EXPECT_EQ(player.item->forwardBufferDuration, 12.0);
    EXPECT_EQ(player.item->peakBitRate, 128'000);
    fail();
    clock.advance(2s);
    EXPECT_EQ(player.item->forwardBufferDuration, 24.0);
    EXPECT_EQ(player.item->peakBitRate, 80'000);
    fail();
    clock.advance(3s);
    EXPECT_EQ(player.item->forwardBufferDuration, 36.0);
    EXPECT_EQ(player.item->peakBitRate, 48'000);
}

TEST_F(RadioPlayerConnectTest, aStationWithoutAnAddressIsGivenUpAtOnce)
{
    radio->play(withoutAddress(uno), list);
    EXPECT_EQ(failureKind(), Kind::unsupported);
    EXPECT_EQ(failureMessage(), u"Il formato dello stream di Uno non è supportato."_s);
    EXPECT_TRUE(player.items.empty());
    EXPECT_EQ(takeLog(),
        (QStringList{ u"playback: Avvio Uno"_s, u"error: Il formato dello stream di Uno non è supportato."_s }));
}

TEST_F(RadioPlayerConnectTest, aStationWithoutAnAddressSilencesTheOneBefore)
{
    hear(uno);
    radio->play(withoutAddress(due), list);
    EXPECT_FALSE(player.item);
    EXPECT_EQ(clock.pendingTimers(), 0u);
}

TEST_F(RadioPlayerConnectTest, aStationWithoutAnAddressIsNotSkipped)
{
    repository.setAutoSkipUnreachable(true);
    radio->play(withoutAddress(uno), list);
    clock.advance(10s);
    EXPECT_EQ(radio->station()->id, uno.id);
}

struct TimeoutRow
{
    qint64 setting;
    std::chrono::seconds limit;
};

class RadioPlayerTimeoutTest : public RadioPlayerTest, public testing::WithParamInterface<TimeoutRow>
{
};

TEST_P(RadioPlayerTimeoutTest, anAttemptWithoutSoundFailsAtItsLimit)
{
    repository.setConnectTimeout(GetParam().setting);
    radio->play(uno, list);
    clock.advance(GetParam().limit - 1ms);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
    takeLog();
    clock.advance(1ms);
    EXPECT_TRUE(takeLog().contains(u"network: Tentativo 1 fallito (timeout)"_s));
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
}

INSTANTIATE_TEST_SUITE_P(Settings, RadioPlayerTimeoutTest,
    testing::Values(
        TimeoutRow{ 3, 5s }, TimeoutRow{ 5, 5s }, TimeoutRow{ 8, 8s }, TimeoutRow{ 12, 12s }, TimeoutRow{ 30, 12s }));

TEST_F(RadioPlayerConnectTest, aLowerTierHasTheTimeToFillItsReserve)
{
    radio->play(uno, list);
    fail();
    clock.advance(1s);
    takeLog();
    clock.advance(20s - 1ms);
    EXPECT_TRUE(takeLog().isEmpty());
    clock.advance(1ms);
    EXPECT_TRUE(takeLog().contains(u"network: Tentativo 2 fallito (timeout)"_s));
}

TEST_F(RadioPlayerConnectTest, soundEndsTheConnectTimeout)
{
    radio->play(uno, list);
    clock.advance(7s);
    hear();
    listen(10s);
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
}

TEST_F(RadioPlayerConnectTest, readinessAloneIsNotSound)
{
    radio->play(uno, list);
    player.tellStatus(ItemStatus::Ready);
    player.tellLikelyToKeepUp();
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
    clock.advance(8s);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
}

TEST_F(RadioPlayerConnectTest, aFailedItemIsUnknownWithoutAnError)
{
    radio->play(uno, list);
    fail();
    EXPECT_TRUE(takeLog().contains(u"network: Tentativo 1 fallito (unknown)"_s));
}

TEST_F(RadioPlayerConnectTest, aFailedItemIsWhatItsErrorSays)
{
    radio->play(uno, list);
    fail(chainOf(u"tls"_s, 60));
    EXPECT_TRUE(takeLog().contains(u"network: Tentativo 1 fallito (network)"_s));
}

TEST_F(RadioPlayerConnectTest, anItemThatBrokeAfterItSoundedIsANetworkFailure)
{
    hear(uno);
    player.tellFailedToPlayToEnd({});
    EXPECT_TRUE(takeLog().contains(u"network: Tentativo 1 fallito (network)"_s));
}

TEST_F(RadioPlayerConnectTest, anItemThatBrokeIsWhatItsErrorSays)
{
    hear(uno);
    player.tellFailedToPlayToEnd(chainOf(u"timeout"_s, 0));
    EXPECT_TRUE(takeLog().contains(u"network: Tentativo 1 fallito (timeout)"_s));
}

TEST_F(RadioPlayerConnectTest, aStreamThatEndsIsANetworkFailureAndNotTheEndOfTheProgramme)
{
    hear(uno);
    player.tellPlayedToEnd();
    EXPECT_TRUE(takeLog().contains(u"network: Tentativo 1 fallito (network)"_s));
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
}

TEST_F(RadioPlayerConnectTest, aStallIsGivenTheDefaultTime)
{
    hear(uno);
    player.tellStalled();
    player.control = TimeControl::Waiting;
    takeLog();
    listen(7s);
    EXPECT_TRUE(takeLog().isEmpty());
    listen(1s);
    EXPECT_TRUE(takeLog().contains(u"network: Tentativo 1 fallito (timeout)"_s));
}

struct StatusRow
{
    int status;
    bool fails;
};

class RadioPlayerHttpStatusTest : public RadioPlayerTest, public testing::WithParamInterface<StatusRow>
{
};

TEST_P(RadioPlayerHttpStatusTest, onlyAClientErrorBeforeTheFirstSoundCounts)
{
    radio->play(uno, list);
    player.tellHttpStatus(GetParam().status);
    EXPECT_EQ(takeLog().contains(u"network: Tentativo 1 fallito (notFound)"_s), GetParam().fails);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ GetParam().fails ? 2 : 1, 5 }));
}

TEST_P(RadioPlayerHttpStatusTest, isIgnoredAfterTheFirstSound)
{
    hear(uno);
    player.tellHttpStatus(GetParam().status);
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
}

TEST_P(RadioPlayerHttpStatusTest, isIgnoredWhilePaused)
{
    radio->play(uno, list);
    radio->pause();
    player.tellHttpStatus(GetParam().status);
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    EXPECT_TRUE(player.item);
}

INSTANTIATE_TEST_SUITE_P(Statuses, RadioPlayerHttpStatusTest,
    testing::Values(StatusRow{ 399, false }, StatusRow{ 400, true }, StatusRow{ 404, true }, StatusRow{ 410, true },
        StatusRow{ 499, true }, StatusRow{ 500, false }, StatusRow{ 302, false }, StatusRow{ 0, false }));

TEST_F(RadioPlayerConnectTest, aStatusAndTheFailureThatFollowsFromItCountOnce)
{
    radio->play(uno, list);
    const AudioItemId item = itemId();
    player.tellHttpStatus(404, item);
    player.tellStatus(ItemStatus::Failed, chainOf(u"http"_s, 404), item);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
    EXPECT_EQ(takeLog().filter(u"fallito"_s).size(), 1);
}

TEST_F(RadioPlayerConnectTest, aPauseByWhoeverHearsOfTheAttemptStopsIt)
{
    QObject::connect(&broadcasts, &Broadcasts::radioPlaybackDidChange, radio.get(), [this] {
        if (is<Connecting>(radio->state()))
            radio->pause();
    });
    radio->play(uno, list);
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    EXPECT_TRUE(player.items.empty());
    EXPECT_EQ(clock.pendingTimers(), 0u);
}

TEST_F(RadioPlayerConnectTest, anotherStationChosenByWhoeverHearsOfTheAttemptWins)
{
    QObject::connect(&broadcasts, &Broadcasts::radioPlaybackDidChange, radio.get(), [this] {
        if (radio->station() == uno)
            radio->play(due, list);
    });
    radio->play(uno, list);
    ASSERT_EQ(player.items.size(), 1u);
    EXPECT_EQ(url(), due.streamUrl);
    EXPECT_EQ(player.observers(itemId()), 1u);
}

}
