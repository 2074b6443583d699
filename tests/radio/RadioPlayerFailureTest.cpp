// SPDX-License-Identifier: GPL-3.0-or-later
// The six ways out of a failure, and the counters that lead to them.
#include "RadioWorld.h"

namespace velarin::test {

using RadioPlayerFailureTest = RadioPlayerTest;

namespace {

const AudioErrorChain gone = chainOf(u"http"_s, 404);
const AudioErrorChain foreignFormat = chainOf(u"gst-stream"_s, GstError::streamCodecNotFound);
const AudioErrorChain broken = chainOf(u"reset"_s, 104);

}

TEST_F(RadioPlayerFailureTest, aFailureUnloadsTheItemAndItsObservers)
{
    radio->play(uno, list);
    const AudioItemId item = itemId();
    player.calls.clear();
    fail();
    EXPECT_EQ(player.calls, (QStringList{ u"pause"_s, u"no item"_s }));
    EXPECT_EQ(player.observers(item), 0u);
}

TEST_F(RadioPlayerFailureTest, aFailureIsIgnoredWithoutTheWishForSound)
{
    hear(uno);
    radio->pause();
    takeLog();
    player.tellPlayedToEnd();
    fail(gone);
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
    EXPECT_TRUE(takeLog().isEmpty());
}

TEST_F(RadioPlayerFailureTest, aFailureIsLoggedWithItsNumberAndKind)
{
    radio->play(uno, list);
    takeLog();
    fail(broken);
    EXPECT_EQ(takeLog(), (QStringList{ u"playback: Linea debole: riduco a qualità alta per non interrompere l'audio"_s,
                             u"network: Tentativo 1 fallito (network)"_s }));
}

TEST_F(RadioPlayerFailureTest, aWrongAddressDoesNotLowerTheQuality)
{
    radio->play(uno, list);
    fail(gone);
    clock.advance(1s);
    fail(foreignFormat);
    EXPECT_EQ(radio->quality().tier, 0);
}

TEST_F(RadioPlayerFailureTest, retriesComeAfterOneTwoThreeAndFiveSecondsAndCount)
{
    radio->play(uno, list);
    qint64 attempt = 1;
    for (const auto delay : { 1s, 2s, 3s, 5s }) {
        fail();
        ++attempt;
        EXPECT_EQ(radio->state(), PlaybackState(Connecting{ attempt, 5 }));
        const auto items = player.items.size();
        clock.advance(delay - 1ms);
        EXPECT_EQ(player.items.size(), items);
        clock.advance(1ms);
        EXPECT_EQ(player.items.size(), items + 1);
        EXPECT_EQ(radio->state(), PlaybackState(Connecting{ attempt, 5 }));
    }
}

TEST_F(RadioPlayerFailureTest, theFifthFailureGivesUpAndWaitsPatiently)
{
    radio->play(uno, list);
    failRun(broken);
    EXPECT_EQ(failureKind(), Kind::network);
    EXPECT_EQ(failureMessage(), u"Uno non risponde. Continuo a riprovare da sola ogni 15 secondi."_s);
    EXPECT_FALSE(player.item);
    EXPECT_FALSE(radio->isSounding());
}

TEST_F(RadioPlayerFailureTest, aGiveUpIsLoggedWithItsReasonAndItsNextTry)
{
    radio->play(uno, list);
    failRun(broken);
    const QStringList log = takeLog();
    EXPECT_EQ(log.mid(log.size() - 2),
        (QStringList{ u"error: Impossibile connettersi a Uno. Controlla la connessione e riprova."_s,
            u"network: Nuovo tentativo tra 15 secondi (qualità minima)"_s }));
}

TEST_F(RadioPlayerFailureTest, patienceWakesANewRunOfFive)
{
    radio->play(uno, list);
    failRun();
    clock.advance(15s);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
    EXPECT_TRUE(player.item);
    fail();
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
}

TEST_F(RadioPlayerFailureTest, patienceGrowsWithoutAnEnd)
{
    radio->play(uno, list);
    for (const auto delay : { 15s, 30s, 60s, 120s, 120s, 120s }) {
        failRun();
        EXPECT_EQ(
            failureMessage(), u"Uno non risponde. Continuo a riprovare da sola ogni %1 secondi."_s.arg(delay.count()));
        const auto items = player.items.size();
        clock.advance(delay - 1ms);
        EXPECT_EQ(player.items.size(), items);
        clock.advance(1ms);
        EXPECT_EQ(player.items.size(), items + 1);
    }
}

TEST_F(RadioPlayerFailureTest, soundClearsThePatience)
{
    radio->play(uno, list);
    failRun();
    clock.advance(15s);
    hear();
    failRun();
    EXPECT_TRUE(failureMessage().contains(u"ogni 15 secondi"_s));
}

TEST_F(RadioPlayerFailureTest, aNewSessionClearsThePatience)
{
    radio->play(uno, list);
    failRun();
    radio->play(uno, list);
    failRun();
    EXPECT_TRUE(failureMessage().contains(u"ogni 15 secondi"_s));
}

TEST_F(RadioPlayerFailureTest, soundClearsTheFailures)
{
    radio->play(uno, list);
    fail();
    clock.advance(1s);
    fail();
    clock.advance(2s);
    hear();
    fail();
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
}

TEST_F(RadioPlayerFailureTest, aNewSessionClearsTheFailures)
{
    radio->play(uno, list);
    fail();
    clock.advance(1s);
    fail();
    radio->play(uno, list);
    fail();
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
}

TEST_F(RadioPlayerFailureTest, aPauseDuringThePatientWaitEndsIt)
{
    radio->play(uno, list);
    failRun();
    radio->pause();
    const auto items = player.items.size();
    clock.advance(1h);
    EXPECT_EQ(player.items.size(), items);
    EXPECT_EQ(radio->state(), PlaybackState(Paused{}));
}

TEST_F(RadioPlayerFailureTest, aStopDuringThePatientWaitEndsIt)
{
    radio->play(uno, list);
    failRun();
    radio->stop();
    clock.advance(1h);
    EXPECT_EQ(radio->state(), PlaybackState(Idle{}));
}

TEST_F(RadioPlayerFailureTest, aResumeDuringThePatientWaitTriesAtOnce)
{
    radio->play(uno, list);
    failRun();
    radio->resume();
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
    clock.advance(7s);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
}

TEST_F(RadioPlayerFailureTest, aWrongAddressIsFinalAfterItsSecondFailure)
{
    radio->play(uno, list);
    fail(gone);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
    clock.advance(1s);
    fail(gone);
    EXPECT_EQ(failureKind(), Kind::notFound);
    EXPECT_EQ(failureMessage(),
        u"Uno non risponde: l'indirizzo dello stream potrebbe essere cambiato. Prova ad aggiornare l'elenco."_s);
    EXPECT_EQ(clock.pendingTimers(), 0u);
}

TEST_F(RadioPlayerFailureTest, aForeignFormatIsFinalAfterItsSecondFailure)
{
    radio->play(uno, list);
    fail(foreignFormat);
    clock.advance(1s);
    fail(foreignFormat);
    EXPECT_EQ(failureKind(), Kind::unsupported);
    EXPECT_EQ(clock.pendingTimers(), 0u);
}

TEST_F(RadioPlayerFailureTest, withoutReconnectionTheFirstFailureIsFinal)
{
    repository.setAutoReconnect(false);
    radio->play(uno, list);
    fail(broken);
    EXPECT_EQ(failureKind(), Kind::network);
    EXPECT_EQ(failureMessage(), u"Impossibile connettersi a Uno. Controlla la connessione e riprova."_s);
    EXPECT_EQ(clock.pendingTimers(), 0u);
}

TEST_F(RadioPlayerFailureTest, withoutReconnectionATimeoutTellsTheTime)
{
    repository.setAutoReconnect(false);
    repository.setConnectTimeout(5);
    radio->play(uno, list);
    clock.advance(5s);
    EXPECT_EQ(failureKind(), Kind::timeout);
    EXPECT_EQ(failureMessage(), u"Uno non ha risposto entro 5 secondi. Riprova tra qualche istante."_s);
}

TEST_F(RadioPlayerFailureTest, offlineWaitsForTheNetworkAndSchedulesNothing)
{
    radio->play(uno, list);
    network.changed(false);
    fail(gone);
    EXPECT_EQ(failureKind(), Kind::offline);
    EXPECT_EQ(failureMessage(), u"Nessuna connessione a internet. Riparte da sola appena torna la rete."_s);
    EXPECT_EQ(clock.pendingTimers(), 0u);
    EXPECT_EQ(radio->quality().tier, 0);
    EXPECT_TRUE(takeLog().contains(u"network: Tentativo 1 fallito (offline)"_s));
}

TEST_F(RadioPlayerFailureTest, everyWayOutIsPublished)
{
    radio->play(withAlternate(uno), list);
    announcements = 0;
    fail(gone);
    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(shown().state, NowPlayingState::Playing);
    clock.advance(500ms);
    announcements = 0;
    fail();
    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(shown().nowPlaying->artist, u"Riconnessione… tentativo 2 di 5"_s);
    network.changed(false);
    clock.advance(1s);
    announcements = 0;
    fail();
    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(shown().state, NowPlayingState::Paused);
}

TEST_F(RadioPlayerFailureTest, theErrorMayBelongToTheHandlerThatIsDetached)
{
    radio->play(uno, list);
    auto error = std::make_unique<AudioErrorChain>(gone);
    QObject::connect(radio.get(), &RadioPlayer::stateChanged, [&] { error.reset(); });
    fail(*error);
    EXPECT_TRUE(takeLog().contains(u"network: Tentativo 1 fallito (notFound)"_s));
}

}
