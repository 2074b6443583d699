// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/RadioNowPlaying.h"

#include "RadioWorld.h"

namespace velarin::test {

namespace {

RadioDisplay displayOf(const PlaybackState& state)
{
    RadioDisplay display;
    display.station = stationNamed(u"Uno"_s);
    display.state = state;
    display.queueCount = 3;
    display.queueIndex = 2;
    return display;
}

RadioDisplay displayOfSong(const std::optional<QString>& artist, const QString& title)
{
    RadioDisplay display = displayOf(Playing{});
    display.songArtist = artist;
    display.songTitle = title;
    return display;
}

}

TEST(RadioNowPlaying, withoutASongTheStationStandsWithItsStatusLine)
{
    const NowPlaying shown = radioNowPlaying(displayOf(Playing{}));
    EXPECT_EQ(shown.title, u"Uno"_s);
    EXPECT_EQ(shown.artist, u"In diretta"_s);
}

TEST(RadioNowPlaying, aReconnectionIsReadInTheArtist)
{
    EXPECT_EQ(radioNowPlaying(displayOf(Connecting{ 3, 5 })).artist, u"Riconnessione… tentativo 3 di 5"_s);
    EXPECT_EQ(radioNowPlaying(displayOf(Failed{ { Kind::network, u"Perché"_s } })).artist, u"Perché"_s);
}

TEST(RadioNowPlaying, aSongStandsWithItsArtist)
{
    const NowPlaying shown = radioNowPlaying(displayOfSong(u"Artist"_s, u"Song"_s));
    EXPECT_EQ(shown.title, u"Song"_s);
    EXPECT_EQ(shown.artist, u"Artist"_s);
    EXPECT_EQ(shown.album, u"Uno"_s);
}

TEST(RadioNowPlaying, aSongWithoutAnArtistStandsWithTheStation)
{
    EXPECT_EQ(radioNowPlaying(displayOfSong(std::nullopt, u"Song"_s)).artist, u"Uno"_s);
}

TEST(RadioNowPlaying, theStationGivesAlbumGenreAndIdentity)
{
    const NowPlaying shown = radioNowPlaying(displayOf(Playing{}));
    EXPECT_EQ(shown.album, u"Uno"_s);
    EXPECT_EQ(shown.genre, u"Pop"_s);
    EXPECT_EQ(shown.contentId, u"rb/uno"_s);
    EXPECT_EQ(shown.queueCount, 3);
    EXPECT_EQ(shown.queueIndex, 2);
}

TEST(RadioNowPlaying, aStreamIsLiveAndHasNoLength)
{
    const NowPlaying shown = radioNowPlaying(displayOf(Playing{}));
    EXPECT_TRUE(shown.isLive);
    EXPECT_EQ(shown.defaultRate, 1.0);
    EXPECT_EQ(shown.duration, std::nullopt);
    EXPECT_EQ(shown.elapsed, std::nullopt);
}

TEST(RadioNowPlaying, theClockRunsOnlyWhilePlaying)
{
    EXPECT_EQ(radioNowPlaying(displayOf(Playing{})).rate, 1.0);
    for (const PlaybackState& state : { PlaybackState(Idle{}), PlaybackState(Connecting{ 1, 5 }),
             PlaybackState(Buffering{}), PlaybackState(Paused{}), PlaybackState(Failed{}) })
        EXPECT_EQ(radioNowPlaying(displayOf(state)).rate, 0.0) << toText(state).toStdString();
}

TEST(RadioNowPlaying, thePictureIsPassedOn)
{
    RadioDisplay display = displayOf(Playing{});
    EXPECT_TRUE(radioNowPlaying(display).artwork.isNull());
    display.artwork = QImage(2, 2, QImage::Format_RGB32);
    display.artwork.fill(Qt::red);
    EXPECT_EQ(radioNowPlaying(display).artwork, display.artwork);
}

TEST(RadioNowPlaying, tryingCountsAsPlayingAndTheRestAsPaused)
{
    EXPECT_EQ(radioNowPlayingState(Playing{}), NowPlayingState::Playing);
    EXPECT_EQ(radioNowPlayingState(Connecting{ 1, 5 }), NowPlayingState::Playing);
    EXPECT_EQ(radioNowPlayingState(Buffering{}), NowPlayingState::Playing);
    EXPECT_EQ(radioNowPlayingState(Idle{}), NowPlayingState::Paused);
    EXPECT_EQ(radioNowPlayingState(Paused{}), NowPlayingState::Paused);
    EXPECT_EQ(radioNowPlayingState(Failed{}), NowPlayingState::Paused);
}

}
