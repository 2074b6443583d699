// SPDX-License-Identifier: GPL-3.0-or-later
// What the stream announces, and what is shown of it.
#include "RadioWorld.h"

namespace velarin::test {

using RadioPlayerTitleTest = RadioPlayerTest;

TEST_F(RadioPlayerTitleTest, anAnnouncedSongIsShown)
{
    hear(uno);
    announcements = 0;
    player.tellTitle(u"Artist - Song"_s);
    EXPECT_EQ(radio->songArtist(), u"Artist"_s);
    EXPECT_EQ(radio->songTitle(), u"Song"_s);
    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(shown().nowPlaying->title, u"Song"_s);
    EXPECT_EQ(shown().nowPlaying->artist, u"Artist"_s);
}

TEST_F(RadioPlayerTitleTest, theSameSongAgainIsNoNews)
{
    hear(uno);
    player.tellTitle(u"Artist - Song"_s);
    int changes = 0;
    QObject::connect(radio.get(), &RadioPlayer::songTitleChanged, [&] { ++changes; });
    announcements = 0;
    player.tellTitle(u"  Artist - Song "_s);
    player.tellTitle(u"Artist~Song"_s);
    EXPECT_EQ(announcements, 0);
    EXPECT_EQ(changes, 0);
}

TEST_F(RadioPlayerTitleTest, anotherArtistOfTheSameTitleIsNews)
{
    hear(uno);
    player.tellTitle(u"Artist - Song"_s);
    announcements = 0;
    player.tellTitle(u"Song"_s);
    EXPECT_EQ(radio->songArtist(), std::nullopt);
    EXPECT_EQ(radio->songTitle(), u"Song"_s);
    EXPECT_EQ(announcements, 1);
}

TEST_F(RadioPlayerTitleTest, theStationsNameReturnsTheDisplayToTheStation)
{
    hear(uno);
    player.tellTitle(u"Artist - Song"_s);
    announcements = 0;
    player.tellTitle(u"UNO"_s);
    EXPECT_EQ(radio->songTitle(), std::nullopt);
    EXPECT_EQ(radio->songArtist(), std::nullopt);
    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(shown().nowPlaying->title, u"Uno"_s);
}

TEST_F(RadioPlayerTitleTest, anEmptyTitleReturnsTheDisplayToTheStation)
{
    hear(uno);
    player.tellTitle(u"Artist - Song"_s);
    player.tellTitle(QString());
    EXPECT_EQ(radio->songTitle(), std::nullopt);
}

TEST_F(RadioPlayerTitleTest, aTitleOf159CharactersIsShownAndOneOf160ClearsTheSong)
{
    hear(uno);
    player.tellTitle(QString(159, u'x'));
    EXPECT_EQ(radio->songTitle(), QString(159, u'x'));
    player.tellTitle(QString(160, u'x'));
    EXPECT_EQ(radio->songTitle(), std::nullopt);
}

TEST_F(RadioPlayerTitleTest, noSongAfterNoSongIsNoNews)
{
    hear(uno);
    announcements = 0;
    player.tellTitle(u"Uno"_s);
    player.tellTitle(QString());
    EXPECT_EQ(announcements, 0);
}

TEST_F(RadioPlayerTitleTest, separatorsWithNothingBetweenThemChangeNothing)
{
    hear(uno);
    player.tellTitle(u"Artist - Song"_s);
    announcements = 0;
    player.tellTitle(u" ~ ~"_s);
    EXPECT_EQ(radio->songTitle(), u"Song"_s);
    EXPECT_EQ(announcements, 0);
}

TEST_F(RadioPlayerTitleTest, anArtistWithATildeAloneIsTitleAndArtist)
{
    hear(uno);
    player.tellTitle(u"Artist~"_s);
    EXPECT_EQ(radio->songTitle(), u"Artist"_s);
    EXPECT_EQ(radio->songArtist(), u"Artist"_s);
}

TEST_F(RadioPlayerTitleTest, ofTwoTitlesInARowTheLaterOneStays)
{
    hear(uno);
    player.tellTitle(u"A - 1"_s);
    player.tellTitle(u"B - 2"_s);
    EXPECT_EQ(radio->songTitle(), u"2"_s);
}

TEST_F(RadioPlayerTitleTest, aTitleMayComeBeforeTheSoundAndDuringAPause)
{
    radio->play(uno, list);
    player.tellTitle(u"A - 1"_s);
    EXPECT_EQ(radio->songTitle(), u"1"_s);
    hear();
    radio->pause();
    player.tellTitle(u"B - 2"_s);
    EXPECT_EQ(radio->songTitle(), u"2"_s);
}

TEST_F(RadioPlayerTitleTest, aReconnectionKeepsTheSong)
{
    hear(uno);
    player.tellTitle(u"Artist - Song"_s);
    fail();
    clock.advance(1s);
    EXPECT_EQ(radio->songTitle(), u"Song"_s);
}

}
