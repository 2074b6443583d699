// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/player/BarFace.h"

#include <gmock/gmock.h>

using namespace velarin;
using namespace testing;

using Source = PlaybackCoordinator::Source;

namespace {

BarFacts radioFacts(PlaybackState state)
{
    BarFacts facts;
    facts.active = Source::radio;
    facts.radio = std::move(state);
    facts.hasStation = true;
    facts.radioTitle = QStringLiteral("La strada");
    facts.radioSubtitle = QStringLiteral("Radio Uno");
    return facts;
}

}

TEST(BarFaceTest, withNoSourceItInvitesToChooseARadio)
{
    const BarFace face = barFace({});
    EXPECT_EQ(face.title, u"Niente in riproduzione");
    EXPECT_EQ(face.subtitle, u"Scegli una radio");
    EXPECT_FALSE(face.hasSource);
    EXPECT_FALSE(face.showsHeart);
}

TEST(BarFaceTest, withNoSourceNothingOfALeftOverRadioShows)
{
    BarFacts facts = radioFacts(Playing{});
    facts.active = Source::none;
    const BarFace face = barFace(facts);
    EXPECT_FALSE(face.live);
    EXPECT_FALSE(face.showsHeart);
    facts.radio = Failed{};
    EXPECT_FALSE(barFace(facts).failed);
}

TEST(BarFaceTest, theRadioShowsItsOwnWords)
{
    const BarFace face = barFace(radioFacts(Playing{}));
    EXPECT_EQ(face.title, u"La strada");
    EXPECT_EQ(face.subtitle, u"Radio Uno");
}

TEST(BarFaceTest, aPodcastWithoutAnEpisodeAndMusicWithoutATrackHaveANameAndNoSecondLine)
{
    BarFacts facts;
    facts.active = Source::podcast;
    EXPECT_EQ(barFace(facts).title, u"Podcast");
    EXPECT_EQ(barFace(facts).subtitle, QString());
    facts.active = Source::music;
    EXPECT_EQ(barFace(facts).title, u"Musica");
    EXPECT_EQ(barFace(facts).subtitle, QString());
}

TEST(BarFaceTest, theEqualiserStandsInTheTimelineOnlyWhileTheRadioPlays)
{
    EXPECT_TRUE(barFace(radioFacts(Playing{})).live);
    for (const PlaybackState& state : { PlaybackState(Idle{}), PlaybackState(Connecting{}), PlaybackState(Buffering{}),
             PlaybackState(Paused{}), PlaybackState(Failed{}) })
        EXPECT_FALSE(barFace(radioFacts(state)).live) << state.index();
}

TEST(BarFaceTest, theArcTurnsWhileTheRadioConnectsAndBuffers)
{
    EXPECT_TRUE(barFace(radioFacts(Connecting{})).waiting);
    EXPECT_TRUE(barFace(radioFacts(Buffering{})).waiting);
    EXPECT_FALSE(barFace(radioFacts(Playing{})).waiting);
    EXPECT_FALSE(barFace(radioFacts(Failed{})).waiting);
}

TEST(BarFaceTest, aFailedRadioCanBeTriedAgain)
{
    EXPECT_TRUE(barFace(radioFacts(Failed{})).failed);
    EXPECT_FALSE(barFace(radioFacts(Paused{})).failed);
}

TEST(BarFaceTest, theHeartIsThereOnlyForARadioWithAStation)
{
    BarFacts facts = radioFacts(Playing{});
    EXPECT_TRUE(barFace(facts).showsHeart);
    facts.hasStation = false;
    EXPECT_FALSE(barFace(facts).showsHeart);
    facts.hasStation = true;
    facts.active = Source::music;
    EXPECT_FALSE(barFace(facts).showsHeart);
}

TEST(BarFaceTest, theHeartTellsWhatItWouldDo)
{
    BarFacts facts = radioFacts(Playing{});
    EXPECT_EQ(barFace(facts).heartSymbol, u"heart");
    EXPECT_EQ(barFace(facts).heartHelp, u"Aggiungi ai preferiti");
    facts.favorite = true;
    EXPECT_EQ(barFace(facts).heartSymbol, u"heart.fill");
    EXPECT_EQ(barFace(facts).heartHelp, u"Rimuovi dai preferiti");
}

TEST(BarFaceTest, playAndVolumeTakeTheIconOfTheirState)
{
    BarFacts facts = radioFacts(Playing{});
    EXPECT_EQ(barFace(facts).playSymbol, u"play.circle.fill");
    facts.playing = true;
    EXPECT_EQ(barFace(facts).playSymbol, u"pause.circle.fill");
    EXPECT_EQ(barFace(facts).volumeSymbol, u"speaker.fill");
    facts.volume = 0.0F;
    EXPECT_EQ(barFace(facts).volumeSymbol, u"speaker.slash.fill");
    facts.volume = 0.01F;
    EXPECT_EQ(barFace(facts).volumeSymbol, u"speaker.fill");
}
