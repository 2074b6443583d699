// SPDX-License-Identifier: GPL-3.0-or-later
// What a listener and the media keys can ask of the radio.
#include "RadioWorld.h"

namespace velarin::test {

TEST_F(RadioPlayerTest, startsWithNothingLoaded)
{
    EXPECT_EQ(radio->state(), PlaybackState(Idle{}));
    EXPECT_EQ(radio->station(), std::nullopt);
    EXPECT_TRUE(radio->queue().isEmpty());
    EXPECT_EQ(radio->queueIndex(), 0);
    EXPECT_EQ(radio->quality(), StreamQuality{ 0 });
    EXPECT_TRUE(radio->artwork().isNull());
    EXPECT_TRUE(player.calls.isEmpty());
}

TEST_F(RadioPlayerTest, wiresTheMediaKeysWhenItIsMade)
{
    ASSERT_TRUE(controls.handlers.togglePlayPause);
    fillCatalogue({ uno });
    controls.handlers.togglePlayPause();
    EXPECT_EQ(radio->station()->id, uno.id);
}

TEST_F(RadioPlayerTest, playTakesTheOutputAndSaysSo)
{
    radio->play(uno, list);
    EXPECT_EQ(coordinator.active(), Source::radio);
    EXPECT_EQ(takeLog(), QStringList{ u"playback: Avvio Uno"_s });
}

TEST_F(RadioPlayerTest, playSilencesTheOtherEngine)
{
    coordinator.activate(Source::podcast);
    radio->play(uno, list);
    EXPECT_EQ(podcasts.pauses, 1);
}

TEST_F(RadioPlayerTest, playFindsThePlaceInTheGivenList)
{
    radio->play(tre, list);
    EXPECT_EQ(radio->queue(), list);
    EXPECT_EQ(radio->queueIndex(), 2);
    EXPECT_EQ(radio->station(), tre);
}

TEST_F(RadioPlayerTest, playTakesTheFirstOfTwoEntriesWithTheSameId)
{
    radio->play(due, QList<Station>{ uno, due, due });
    EXPECT_EQ(radio->queueIndex(), 1);
}

TEST_F(RadioPlayerTest, aStationOutsideTheListPlaysAloneAndNextDoesNothing)
{
    radio->play(uno, QList<Station>{ due, tre });
    EXPECT_EQ(radio->queue(), QList<Station>{ uno });
    EXPECT_EQ(radio->queueIndex(), 0);
    const AudioItemId before = itemId();
    radio->next();
    EXPECT_EQ(itemId(), before);
}

TEST_F(RadioPlayerTest, anEmptyListMakesAListOfOne)
{
    radio->play(uno, QList<Station>());
    EXPECT_EQ(radio->queue(), QList<Station>{ uno });
    EXPECT_EQ(radio->queueIndex(), 0);
}

TEST_F(RadioPlayerTest, withoutAListTheCatalogueGivesTheNeighbours)
{
    fillCatalogue(list);
    radio->play(*repository.station(due.id));
    EXPECT_EQ(radio->queueSize(), 3);
    EXPECT_EQ(radio->queue().at(radio->queueIndex()).id, due.id);
}

TEST_F(RadioPlayerTest, aStartIsRememberedForTheNextRun)
{
    radio->play(uno, list);
    radio->play(due, list);
    EXPECT_EQ(repository.lastPlayedId(), due.id);
    EXPECT_EQ(repository.recentIds(), (QStringList{ due.id, uno.id }));
}

TEST_F(RadioPlayerTest, aStartEndsARingingAlarm)
{
    radio->play(uno, list);
    EXPECT_EQ(alarm.endings, QStringList{ u"radio scelta"_s });
}

TEST_F(RadioPlayerTest, anAlarmThatStartsTheRadioIsNotEndedByIt)
{
    alarm.startsOwnAudio = true;
    radio->play(uno, list);
    radio->pause();
    radio->stop();
    EXPECT_TRUE(alarm.endings.isEmpty());
}

TEST_F(RadioPlayerTest, aNewStationForgetsTheSong)
{
    hear(uno);
    player.tellTitle(u"Artist - Song"_s);
    radio->play(due, list);
    EXPECT_EQ(radio->songTitle(), std::nullopt);
    EXPECT_EQ(radio->songArtist(), std::nullopt);
}

TEST_F(RadioPlayerTest, theSameStationAgainConnectsAnew)
{
    hear(uno);
    const AudioItemId before = itemId();
    radio->play(uno, list);
    EXPECT_NE(itemId(), before);
    EXPECT_EQ(radio->state(), PlaybackState(Connecting{ 1, 5 }));
}

TEST_F(RadioPlayerTest, onlyPlayingCountsAsPlaying)
{
    EXPECT_FALSE(radio->isPlaying());
    radio->play(uno, list);
    EXPECT_FALSE(radio->isPlaying());
    hear();
    EXPECT_TRUE(radio->isPlaying());
    player.tellTimeControl(TimeControl::Waiting);
    EXPECT_FALSE(radio->isPlaying());
}

TEST_F(RadioPlayerTest, nextAndPreviousGoRound)
{
    radio->play(due, list);
    radio->next();
    EXPECT_EQ(radio->station(), tre);
    radio->next();
    EXPECT_EQ(radio->station(), uno);
    EXPECT_EQ(radio->queueIndex(), 0);
    radio->previous();
    EXPECT_EQ(radio->station(), tre);
    EXPECT_EQ(radio->queueIndex(), 2);
    EXPECT_EQ(url(), tre.streamUrl);
}

TEST_F(RadioPlayerTest, nextOnOneStationDoesNothingNotEvenALogLine)
{
    radio->play(uno, QList<Station>{ uno });
    takeLog();
    player.calls.clear();
    announcements = 0;
    radio->next();
    radio->previous();
    EXPECT_TRUE(takeLog().isEmpty());
    EXPECT_TRUE(player.calls.isEmpty());
    EXPECT_EQ(announcements, 0);
}

TEST_F(RadioPlayerTest, nextWithNothingLoadedDoesNothing)
{
    radio->next();
    radio->previous();
    EXPECT_EQ(radio->station(), std::nullopt);
}

TEST_F(RadioPlayerTest, nextDoesNotTakeTheOutput)
{
    hear(uno);
    coordinator.activate(Source::podcast);
    radio->next();
    EXPECT_EQ(coordinator.active(), Source::podcast);
}

TEST_F(RadioPlayerTest, volumeReachesThePlayer)
{
    radio->setVolume(0.25F);
    EXPECT_EQ(player.level, 0.25F);
}

TEST_F(RadioPlayerTest, hasNoPositionAndIgnoresASeek)
{
    hear(uno);
    player.calls.clear();
    EXPECT_EQ(radio->position(), std::nullopt);
    radio->seek(10.0);
    EXPECT_TRUE(player.calls.isEmpty());
}

TEST_F(RadioPlayerTest, anEqualStateWakesNobodyButIsStillAnnounced)
{
    hear(uno);
    radio->pause();
    int changes = 0;
    QObject::connect(radio.get(), &RadioPlayer::stateChanged, [&] { ++changes; });
    announcements = 0;
    radio->pause();
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(announcements, 1);
}

TEST_F(RadioPlayerTest, anEqualStationAndQueueWakeNobody)
{
    radio->play(uno, list);
    int changes = 0;
    QObject::connect(radio.get(), &RadioPlayer::stationChanged, [&] { ++changes; });
    QObject::connect(radio.get(), &RadioPlayer::queueChanged, [&] { ++changes; });
    QObject::connect(radio.get(), &RadioPlayer::queueIndexChanged, [&] { ++changes; });
    radio->play(uno, list);
    EXPECT_EQ(changes, 0);
    Station renamed = uno;
    renamed.genre = u"Rock"_s;
    radio->play(renamed, list);
    EXPECT_EQ(changes, 1);
}

TEST_F(RadioPlayerTest, propertiesCanBeFollowedByABinding)
{
    QProperty<bool> sounds;
    sounds.setBinding([&] { return is<Playing>(radio->bindableState().value()); });
    EXPECT_FALSE(sounds.value());
    hear(uno);
    EXPECT_TRUE(sounds.value());
    EXPECT_TRUE(radio->bindableState().isReadOnly());
}

TEST_F(RadioPlayerTest, withoutAnybodyWhoRingsEverythingWorks)
{
    radio = std::make_unique<RadioPlayer>(RadioPlayerServices{
        repository, player, coordinator, controls, diagnostics, artwork, network, sleep, clock, broadcasts, nullptr });
    coordinator.attach(Source::radio, *radio);
    hear(uno);
    radio->pause();
    radio->stop();
    EXPECT_EQ(radio->state(), PlaybackState(Idle{}));
}

}
