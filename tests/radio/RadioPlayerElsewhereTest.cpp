// SPDX-License-Identifier: GPL-3.0-or-later
// The two ways out that lead to another address: the second one of the station, and the next station.
#include "RadioWorld.h"

namespace velarin::test {

using RadioPlayerElsewhereTest = RadioPlayerTest;

namespace {

const AudioErrorChain gone = chainOf(u"http"_s, 404);
const AudioErrorChain noAnswer = chainOf(u"timeout"_s, 0);
const AudioErrorChain broken = chainOf(u"reset"_s, 104);

}

TEST_F(RadioPlayerElsewhereTest, aWrongAddressGoesToTheSecondOneAtOnce)
{
    radio->play(withAlternate(uno), list);
    fail(gone);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
    EXPECT_FALSE(player.item);
    clock.advance(499ms);
    EXPECT_FALSE(player.item);
    clock.advance(1ms);
    EXPECT_EQ(url(), u"http://radio.example/uno-2"_s);
}

TEST_F(RadioPlayerElsewhereTest, aTimeoutRetriesTheMainAddressFirstAndThenTheSecondOne)
{
    radio->play(withAlternate(uno), list);
    fail(noAnswer);
    clock.advance(1s);
    EXPECT_EQ(url(), uno.streamUrl);
    fail(noAnswer);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
    clock.advance(500ms);
    EXPECT_EQ(url(), u"http://radio.example/uno-2"_s);
}

TEST_F(RadioPlayerElsewhereTest, aBrokenLineNeverGoesToTheSecondAddress)
{
    radio->play(withAlternate(uno), list);
    failRun(broken);
    failRun();
    for (const AudioItem& item : player.items)
        EXPECT_EQ(item.url.toString(), uno.streamUrl);
}

TEST_F(RadioPlayerElsewhereTest, theSecondAddressBeginsARunOfItsOwn)
{
    radio->play(withAlternate(uno), list);
    fail(gone);
    clock.advance(500ms);
    fail(gone);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
    clock.advance(1s);
    fail(gone);
    EXPECT_EQ(failureKind(), Kind::notFound);
}

TEST_F(RadioPlayerElsewhereTest, aSessionNeverGoesBackFromItsSecondAddress)
{
    radio->play(withAlternate(uno), list);
    fail(gone);
    clock.advance(500ms);
    failRun();
    clock.advance(15s);
    EXPECT_EQ(url(), u"http://radio.example/uno-2"_s);
    hear();
    fail(noAnswer);
    clock.advance(1s);
    fail(noAnswer);
    clock.advance(2s);
    EXPECT_EQ(url(), u"http://radio.example/uno-2"_s);
}

TEST_F(RadioPlayerElsewhereTest, aNewSessionBeginsAtTheMainAddress)
{
    radio->play(withAlternate(uno), list);
    fail(gone);
    clock.advance(500ms);
    radio->play(withAlternate(uno), list);
    EXPECT_EQ(url(), uno.streamUrl);
}

TEST_F(RadioPlayerElsewhereTest, aPauseBeforeTheSecondAddressStopsIt)
{
    radio->play(withAlternate(uno), list);
    fail(gone);
    radio->pause();
    clock.advance(10s);
    EXPECT_FALSE(player.item);
}

TEST_F(RadioPlayerElsewhereTest, aStationThatDoesNotConnectIsSkipped)
{
    repository.setAutoSkipUnreachable(true);
    radio->play(uno, list);
    takeLog();
    fail(broken);
    EXPECT_TRUE(takeLog().contains(u"playback: Uno non si connette: passo alla successiva"_s));
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
    clock.advance(399ms);
    EXPECT_EQ(radio->station(), uno);
    clock.advance(1ms);
    EXPECT_EQ(radio->station(), due);
    EXPECT_EQ(radio->queue(), list);
    EXPECT_EQ(radio->queueIndex(), 1);
}

TEST_F(RadioPlayerElsewhereTest, theSkipGoesRound)
{
    repository.setAutoSkipUnreachable(true);
    radio->play(tre, list);
    fail();
    clock.advance(400ms);
    EXPECT_EQ(radio->station(), uno);
}

TEST_F(RadioPlayerElsewhereTest, atMostOneRoundIsSkippedAndThenTheLastStationIsRetried)
{
    repository.setAutoSkipUnreachable(true);
    radio->play(uno, list);
    fail();
    clock.advance(400ms);
    fail();
    clock.advance(400ms);
    EXPECT_EQ(radio->station(), tre);
    fail();
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
    clock.advance(1s);
    EXPECT_EQ(radio->station(), tre);
}

TEST_F(RadioPlayerElsewhereTest, aChoiceOfTheUserBeginsANewRound)
{
    repository.setAutoSkipUnreachable(true);
    radio->play(uno, list);
    fail();
    clock.advance(400ms);
    fail();
    clock.advance(400ms);
    radio->play(uno, list);
    fail();
    clock.advance(400ms);
    EXPECT_EQ(radio->station(), due);
}

TEST_F(RadioPlayerElsewhereTest, soundBeginsANewRound)
{
    repository.setAutoSkipUnreachable(true);
    const QList<Station> two{ uno, due };
    radio->play(uno, two);
    fail();
    clock.advance(400ms);
    hear();
    radio->start(due);
    fail();
    clock.advance(400ms);
    EXPECT_EQ(radio->station(), uno);
}

TEST_F(RadioPlayerElsewhereTest, nextDoesNotBeginANewRound)
{
    repository.setAutoSkipUnreachable(true);
    const QList<Station> two{ uno, due };
    radio->play(uno, two);
    fail();
    clock.advance(400ms);
    radio->next();
    fail();
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
}

TEST_F(RadioPlayerElsewhereTest, aStationThatHasPlayedAndDiedIsRetriedAndNotSkipped)
{
    repository.setAutoSkipUnreachable(true);
    const QList<Station> two{ uno, due };
    radio->play(uno, two);
    hear();
    player.tellPlayedToEnd();
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
    clock.advance(1s);
    EXPECT_EQ(radio->station(), uno);
}

TEST_F(RadioPlayerElsewhereTest, aListOfOneIsNotSkipped)
{
    repository.setAutoSkipUnreachable(true);
    radio->play(uno, QList<Station>{ uno });
    fail();
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 }));
}

TEST_F(RadioPlayerElsewhereTest, withoutTheWishNothingIsSkipped)
{
    radio->play(uno, list);
    fail();
    clock.advance(10s);
    EXPECT_EQ(radio->station(), uno);
}

TEST_F(RadioPlayerElsewhereTest, settingTheAutomaticSkipPostsNothing)
{
    int posted = 0;
    QObject::connect(&broadcasts, &Broadcasts::radioSettingsDidChange, [&] { ++posted; });
    repository.setAutoSkipUnreachable(true);
    EXPECT_EQ(posted, 0);
    EXPECT_EQ(announcements, 0);
}

TEST_F(RadioPlayerElsewhereTest, theSecondAddressComesBeforeTheNextStation)
{
    repository.setAutoSkipUnreachable(true);
    radio->play(withAlternate(uno), list);
    fail(gone);
    clock.advance(500ms);
    EXPECT_EQ(url(), u"http://radio.example/uno-2"_s);
    fail(gone);
    clock.advance(400ms);
    EXPECT_EQ(radio->station(), due);
}

}
