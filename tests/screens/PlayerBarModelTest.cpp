// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/player/PlayerBarModel.h"

#include "screens/ScreensFixture.h"
#include "screens/player/PlaybackCommands.h"

#include <QSignalSpy>

using namespace velarin;
using namespace velarin::test;
using namespace testing;

namespace {

class PlayerBarModelTest : public ScreensFixture
{
protected:
    PlayerBarModelTest() { load({ uno, due }); }

    const Station uno{ stationNamed(QStringLiteral("Radio Uno")) };
    const Station due{ stationNamed(QStringLiteral("Radio Due")) };
    QImage shown;
    PlayerBarModel bar{ services(), [this](const QImage& picture) { shown = picture; } };
    PlaybackCommands commands{ services() };
};

}

TEST_F(PlayerBarModelTest, aStationThatIsPlayedShowsAtOnceAndLiveWhenItSounds)
{
    radio.play(uno);
    EXPECT_EQ(bar.face().title, u"Radio Uno");
    EXPECT_TRUE(bar.face().waiting);
    EXPECT_FALSE(bar.face().live);
    sound();
    EXPECT_TRUE(bar.face().live);
    EXPECT_EQ(bar.face().playSymbol, u"pause.circle.fill");
}

TEST_F(PlayerBarModelTest, aTitleTakesTheFirstLineAndTheStationTheSecond)
{
    radio.play(uno);
    sound();
    player.tellTitle(QStringLiteral("Lidia Serra - Onda"));
    EXPECT_EQ(bar.face().title, radio.displayTitle());
    EXPECT_EQ(bar.face().subtitle, radio.displaySubtitle());
    EXPECT_THAT(bar.face().title.toStdString(), HasSubstr("Onda"));
}

TEST_F(PlayerBarModelTest, nothingIsToldTwice)
{
    radio.play(uno);
    sound();
    const QSignalSpy spy(&bar, &PlayerBarModel::faceChanged);
    repository.setAutoReconnect(repository.autoReconnect());
    Q_EMIT radio.stateChanged();
    EXPECT_EQ(spy.count(), 0);
}

TEST_F(PlayerBarModelTest, aFailedRadioIsStartedAgainByRiprova)
{
    radio.play(uno);
    for (int attempt = 0; attempt < 10 && !bar.face().failed; ++attempt) {
        player.tellStatus(ItemStatus::Failed, { { AudioErrorDomain::http, 404, QString() } });
        clock.advance(std::chrono::seconds(20));
    }
    ASSERT_TRUE(bar.face().failed);
    const std::size_t before = player.items.size();
    bar.retry();
    EXPECT_TRUE(bar.face().waiting);
    EXPECT_EQ(player.items.size(), before + 1);
}

TEST_F(PlayerBarModelTest, theHeartFollowsTheFavourites)
{
    radio.play(uno);
    bar.toggleFavorite();
    EXPECT_TRUE(bar.face().favorite);
    EXPECT_EQ(repository.favorites(), QStringList{ uno.id });
    repository.toggleFavorite(uno.id);
    EXPECT_FALSE(bar.face().favorite);
}

TEST_F(PlayerBarModelTest, theHeartOfTheNextStationIsItsOwn)
{
    repository.toggleFavorite(uno.id);
    radio.play(uno, QList{ uno, due });
    EXPECT_TRUE(bar.face().favorite);
    radio.next();
    EXPECT_FALSE(bar.face().favorite);
}

TEST_F(PlayerBarModelTest, muteGoesToSilenceAndFromSilenceToFull)
{
    bar.setVolume(0.4);
    EXPECT_NEAR(bar.volume(), 0.4, 0.001);
    bar.toggleMute();
    EXPECT_EQ(bar.volume(), 0.0);
    EXPECT_EQ(bar.face().volumeSymbol, u"speaker.slash.fill");
    bar.toggleMute();
    EXPECT_EQ(bar.volume(), 1.0);
}

TEST_F(PlayerBarModelTest, skippingIsOfferedOnlyWhereThereIsSomewhereToSkipTo)
{
    EXPECT_FALSE(bar.face().canSkip);
    radio.play(uno, QList{ uno });
    EXPECT_FALSE(bar.face().canSkip);
    radio.play(uno, QList{ uno, due });
    EXPECT_TRUE(bar.face().canSkip);
}

TEST_F(PlayerBarModelTest, thePictureOfTheStationComesWithANumberOfItsOwn)
{
    EXPECT_EQ(bar.pictureNumber(), 0);
    radio.play(uno);
    executor.runAll();
    EXPECT_GT(bar.pictureNumber(), 0);
    EXPECT_EQ(shown, radio.artwork());
    EXPECT_FALSE(shown.isNull());
}

TEST_F(PlayerBarModelTest, theLargePlayerIsAskedForThroughTheBroadcasts)
{
    const QSignalSpy spy(&broadcasts, &Broadcasts::radioToggleFullPlayer);
    bar.openFullPlayer();
    EXPECT_EQ(spy.count(), 1);
}

TEST_F(PlayerBarModelTest, nextAndPreviousDoNothingWithNothingActive)
{
    commands.next();
    commands.previous();
    EXPECT_FALSE(radio.station().has_value());
    EXPECT_TRUE(player.items.empty());
}

TEST_F(PlayerBarModelTest, nextAndPreviousWalkThroughTheQueue)
{
    radio.play(uno, QList{ uno, due });
    commands.next();
    EXPECT_EQ(radio.station()->id, due.id);
    commands.previous();
    EXPECT_EQ(radio.station()->id, uno.id);
}

TEST_F(PlayerBarModelTest, louderStopsAtFull)
{
    level.setUser(0.98F);
    commands.louder();
    EXPECT_EQ(level.user(), 1.0F);
}

TEST_F(PlayerBarModelTest, seventeenTimesQuieterStopsAtSilence)
{
    level.setUser(1.0F);
    for (int press = 0; press < 16; ++press)
        commands.quieter();
    EXPECT_NEAR(level.user(), 0.04F, 0.001F);
    commands.quieter();
    EXPECT_GE(level.user(), 0.0F);
    EXPECT_LT(level.user(), 0.001F);
}

TEST_F(PlayerBarModelTest, theFavouriteCommandTellsThatThePlaybackChanged)
{
    const QSignalSpy spy(&broadcasts, &Broadcasts::radioPlaybackDidChange);
    commands.toggleFavorite();
    EXPECT_EQ(spy.count(), 0);
    EXPECT_TRUE(repository.favorites().isEmpty());
    radio.play(uno);
    const auto before = spy.count();
    commands.toggleFavorite();
    EXPECT_EQ(spy.count(), before + 1);
    EXPECT_EQ(repository.favorites(), QStringList{ uno.id });
}
