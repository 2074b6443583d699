// SPDX-License-Identifier: GPL-3.0-or-later
// What screens and the system's display see.
#include "RadioWorld.h"

namespace velarin::test {

using RadioPlayerPublishTest = RadioPlayerTest;

TEST_F(RadioPlayerPublishTest, withNothingLoadedTheProgramStands)
{
    EXPECT_EQ(radio->displayTitle(), u"Velarin"_s);
    EXPECT_EQ(radio->displaySubtitle(), u"Pronta"_s);
    EXPECT_EQ(radio->statusLine(), u"Pronta"_s);
}

TEST_F(RadioPlayerPublishTest, withoutASongTheStationStands)
{
    hear(uno);
    EXPECT_EQ(radio->displayTitle(), u"Uno"_s);
    EXPECT_EQ(radio->displaySubtitle(), u"In diretta"_s);
}

TEST_F(RadioPlayerPublishTest, aSongStandsOverItsStation)
{
    hear(uno);
    player.tellTitle(u"Artist - Song"_s);
    EXPECT_EQ(radio->displayTitle(), u"Song"_s);
    EXPECT_EQ(radio->displaySubtitle(), u"Uno"_s);
}

TEST_F(RadioPlayerPublishTest, whatTheRadioDoesStandsUnderASongThatDoesNotPlay)
{
    hear(uno);
    player.tellTitle(u"Artist - Song"_s);
    player.tellTimeControl(TimeControl::Waiting);
    EXPECT_EQ(radio->displayTitle(), u"Song"_s);
    EXPECT_EQ(radio->displaySubtitle(), u"Buffering…"_s);
    radio->pause();
    EXPECT_EQ(radio->displaySubtitle(), u"In pausa"_s);
}

TEST_F(RadioPlayerPublishTest, theStatusLineFollowsTheState)
{
    radio->play(uno, list);
    EXPECT_EQ(radio->statusLine(), u"Connessione…"_s);
    fail();
    EXPECT_EQ(radio->statusLine(), u"Riconnessione… tentativo 2 di 5"_s);
    clock.advance(1s);
    hear();
    EXPECT_EQ(radio->statusLine(), u"In diretta"_s);
    radio->stop();
    EXPECT_EQ(radio->statusLine(), u"Pronta"_s);
}

TEST_F(RadioPlayerPublishTest, aFavouriteIsKnownByItsId)
{
    EXPECT_FALSE(radio->isFavorite());
    repository.toggleFavorite(uno.id);
    EXPECT_FALSE(radio->isFavorite());
    radio->play(uno, list);
    EXPECT_TRUE(radio->isFavorite());
    radio->play(due, list);
    EXPECT_FALSE(radio->isFavorite());
}

TEST_F(RadioPlayerPublishTest, nowPlayingDataComeBeforeTheAnnouncement)
{
    QList<std::size_t> publishedWhenAnnounced;
    QObject::connect(&broadcasts, &Broadcasts::radioPlaybackDidChange,
        [&] { publishedWhenAnnounced.append(controls.published.size()); });
    radio->play(uno, list);
    hear();
    EXPECT_EQ(publishedWhenAnnounced, (QList<std::size_t>{ 1, 2 }));
}

TEST_F(RadioPlayerPublishTest, anotherEngineThatHasTheOutputIsNotOverwritten)
{
    hear(uno);
    coordinator.activate(Source::podcast);
    const auto published = controls.published.size();
    announcements = 0;
    radio->pause();
    EXPECT_EQ(controls.published.size(), published);
    EXPECT_EQ(announcements, 1);
}

TEST_F(RadioPlayerPublishTest, withTheOutputAndNoStationNothingIsLoaded)
{
    coordinator.activate(Source::radio);
    radio->stop();
    ASSERT_EQ(controls.published.size(), 1u);
    EXPECT_EQ(shown().nowPlaying, std::nullopt);
    EXPECT_EQ(shown().state, NowPlayingState::Stopped);
}

TEST_F(RadioPlayerPublishTest, theDisplayTellsTheStationAndItsPlace)
{
    hear(due);
    ASSERT_TRUE(shown().nowPlaying);
    EXPECT_EQ(shown().nowPlaying->contentId, due.id);
    EXPECT_EQ(shown().nowPlaying->queueCount, 3);
    EXPECT_EQ(shown().nowPlaying->queueIndex, 1);
    EXPECT_EQ(shown().state, NowPlayingState::Playing);
}

TEST_F(RadioPlayerPublishTest, afterAStopTheDisplayIsPausedAndKeepsTheStation)
{
    hear(uno);
    radio->stop();
    EXPECT_EQ(shown().state, NowPlayingState::Paused);
    EXPECT_EQ(shown().nowPlaying->title, u"Uno"_s);
    EXPECT_EQ(shown().nowPlaying->artist, u"Pronta"_s);
}

TEST_F(RadioPlayerPublishTest, publishingRefreshesTheCommands)
{
    radio->play(uno, list);
    EXPECT_TRUE(controls.enabled.value(MediaCommand::Next));
    radio->play(uno, QList<Station>{ uno });
    EXPECT_FALSE(controls.enabled.value(MediaCommand::Next));
}

TEST_F(RadioPlayerPublishTest, thePictureArrivesLaterAndIsPublished)
{
    radio->play(uno, list);
    EXPECT_TRUE(radio->artwork().isNull());
    announcements = 0;
    artworkExecutor.runAll();
    EXPECT_EQ(radio->artwork().width(), ArtworkLoader::side);
    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(shown().nowPlaying->artwork, radio->artwork());
}

TEST_F(RadioPlayerPublishTest, aNewStationHasNoPictureAtFirst)
{
    radio->play(uno, list);
    artworkExecutor.runAll();
    radio->play(due, list);
    EXPECT_TRUE(radio->artwork().isNull());
}

TEST_F(RadioPlayerPublishTest, thePictureOfTheStationBeforeComesTooLate)
{
    radio->play(uno, list);
    radio->play(due, list);
    announcements = 0;
    artworkExecutor.runAll();
    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(shown().nowPlaying->contentId, due.id);
}

TEST_F(RadioPlayerPublishTest, aPauseDoesNotStopThePicture)
{
    radio->play(uno, list);
    radio->pause();
    artworkExecutor.runAll();
    EXPECT_FALSE(radio->artwork().isNull());
}

TEST_F(RadioPlayerPublishTest, aRetryDoesNotLoadThePictureAgain)
{
    radio->play(uno, list);
    artworkExecutor.runAll();
    fail();
    clock.advance(1s);
    EXPECT_EQ(artworkExecutor.waiting(), 0u);
    EXPECT_FALSE(radio->artwork().isNull());
}

}
