// SPDX-License-Identifier: GPL-3.0-or-later
// Down the ladder at each failure, and up a rung in ten minutes of steady sound.
#include "RadioWorld.h"

namespace velarin::test {

using RadioPlayerQualityTest = RadioPlayerTest;

namespace {

const QString toMiddle = u"playback: Linea stabile da 10 minuti: torno a qualità alta"_s;
const QString toFull = u"playback: Linea stabile da 10 minuti: torno a qualità piena"_s;

}

class RadioPlayerLadderTest : public RadioPlayerTest
{
protected:
    // A sounding station at this tier.
    void hearAtTier(qint64 tier)
    {
        radio->play(uno, list);
        for (qint64 failures = 0; failures < tier; ++failures) {
            hear();
            fail();
            clock.advance(1s);
        }
        hear();
        takeLog();
    }
};

TEST_F(RadioPlayerLadderTest, eachFailureGoesDownARungAndSaysSo)
{
    radio->play(uno, list);
    QStringList expected;
    for (const QString& label : { u"alta"_s, u"media"_s, u"minima"_s })
        expected.append(u"playback: Linea debole: riduco a qualità %1 per non interrompere l'audio"_s.arg(label));
    failRun();
    EXPECT_EQ(takeLog().filter(u"Linea debole"_s), expected);
    EXPECT_EQ(radio->quality().tier, 3);
}

TEST_F(RadioPlayerLadderTest, atTheBottomNothingMoreIsSaid)
{
    hearAtTier(3);
    failRun();
    EXPECT_TRUE(takeLog().filter(u"Linea debole"_s).isEmpty());
    EXPECT_EQ(radio->quality().tier, 3);
}

TEST_F(RadioPlayerLadderTest, aSecondStationBeginsAtTheLoweredTier)
{
    hearAtTier(2);
    radio->play(due, list);
    EXPECT_EQ(radio->quality().tier, 2);
    EXPECT_EQ(player.item->peakBitRate, 80'000);
}

TEST_F(RadioPlayerLadderTest, tenSteadyMinutesGoUpARung)
{
    hearAtTier(1);
    const AudioItemId item = itemId();
    listen(599s);
    EXPECT_EQ(radio->quality().tier, 1);
    listen(1s);
    EXPECT_EQ(radio->quality().tier, 0);
    EXPECT_EQ(takeLog(), QStringList{ toFull });
    // The stream that sounds stays as it is.
    EXPECT_EQ(itemId(), item);
}

TEST_F(RadioPlayerLadderTest, twentySteadyMinutesClimbTheWholeLadder)
{
    hearAtTier(2);
    listen(1200s);
    EXPECT_EQ(radio->quality().tier, 0);
    EXPECT_EQ(takeLog(), (QStringList{ toMiddle, toFull }));
    // What remains is the watch over the clock.
    EXPECT_EQ(clock.pendingTimers(), 1u);
    listen(3600s);
    EXPECT_TRUE(takeLog().isEmpty());
}

TEST_F(RadioPlayerLadderTest, theHigherTierHoldsFromTheNextAttempt)
{
    hearAtTier(1);
    listen(600s);
    radio->play(uno, list);
    EXPECT_EQ(player.item->forwardBufferDuration, 0.0);
}

TEST_F(RadioPlayerLadderTest, atFullQualityNothingIsCounted)
{
    hear(uno);
    EXPECT_EQ(clock.pendingTimers(), 1u);
}

TEST_F(RadioPlayerLadderTest, moreReportsOfSoundDoNotRestartTheTenMinutes)
{
    hearAtTier(1);
    listen(300s);
    player.tellTimeControl(TimeControl::Playing);
    listen(300s);
    EXPECT_EQ(radio->quality().tier, 0);
}

TEST_F(RadioPlayerLadderTest, aDrySpellRestartsTheTenMinutesFromTheNextSound)
{
    hearAtTier(1);
    listen(540s);
    player.tellTimeControl(TimeControl::Waiting);
    clock.advance(5s);
    player.tellTimeControl(TimeControl::Playing);
    listen(599s);
    EXPECT_EQ(radio->quality().tier, 1);
    listen(1s);
    EXPECT_EQ(radio->quality().tier, 0);
}

TEST_F(RadioPlayerLadderTest, aPauseEndsTheTenMinutes)
{
    hearAtTier(1);
    listen(300s);
    radio->pause();
    clock.advance(600s);
    EXPECT_EQ(radio->quality().tier, 1);
}

TEST_F(RadioPlayerLadderTest, aFailureEndsTheTenMinutes)
{
    hearAtTier(1);
    listen(599s);
    fail(chainOf(u"http"_s, 404));
    clock.advance(1s);
    EXPECT_EQ(radio->quality().tier, 1);
    hear();
    listen(599s);
    EXPECT_EQ(radio->quality().tier, 1);
    listen(1s);
    EXPECT_EQ(radio->quality().tier, 0);
}

TEST_F(RadioPlayerLadderTest, anotherStationEndsTheTenMinutes)
{
    hearAtTier(1);
    listen(599s);
    hear(due);
    listen(2s);
    EXPECT_EQ(radio->quality().tier, 1);
}

TEST_F(RadioPlayerQualityTest, aStationWithoutASecondAddressStaysAtItsOwn)
{
    radio->play(uno, list);
    fail(chainOf(u"http"_s, 404));
    clock.advance(1s);
    EXPECT_EQ(url(), uno.streamUrl);
}

TEST_F(RadioPlayerQualityTest, aSecondAddressThatIsNoneCountsAsNone)
{
    for (const QString& address : { QString(), u"   "_s, uno.streamUrl, u" "_s + uno.streamUrl, u"not an address"_s }) {
        Station station = uno;
        station.alternateStreamUrl = address;
        radio->play(station, list);
        fail(chainOf(u"http"_s, 404));
        EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 2, 5 })) << address.toStdString();
        clock.advance(1s);
        EXPECT_EQ(url(), uno.streamUrl);
    }
}

TEST_F(RadioPlayerQualityTest, theHeartbeatTellsTheTierBelowTheFirst)
{
    EXPECT_EQ(radio->heartbeatText(), u"Radio · - · ferma"_s);
    hear(uno);
    EXPECT_EQ(radio->heartbeatText(), u"Radio · Uno · suona"_s);
    fail();
    EXPECT_EQ(radio->heartbeatText(), u"Radio · Uno · ferma · qualità alta"_s);
    clock.advance(1s);
    hear();
    EXPECT_EQ(radio->heartbeatText(), u"Radio · Uno · suona · qualità alta"_s);
}

}
