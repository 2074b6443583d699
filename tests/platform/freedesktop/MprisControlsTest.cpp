// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/MprisTest.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>

namespace velarin::test {

namespace {

QDBusObjectPath pathOf(const QVariantMap& metadata)
{
    return metadata.value(QStringLiteral("mpris:trackid")).value<QDBusObjectPath>();
}

QVariantList position(const QDBusObjectPath& track, qlonglong microseconds)
{
    return { QVariant::fromValue(track), QVariant::fromValue(microseconds) };
}

}

TEST_F(MprisTest, itSaysWhoItIs)
{
    EXPECT_EQ(root(QStringLiteral("Identity")), QStringLiteral("Velarin"));
    EXPECT_EQ(root(QStringLiteral("DesktopEntry")), QStringLiteral("com.brenholt.velarin"));
    EXPECT_EQ(
        root(QStringLiteral("SupportedUriSchemes")), QStringList({ QStringLiteral("http"), QStringLiteral("https") }));
    EXPECT_TRUE(root(QStringLiteral("SupportedMimeTypes")).toStringList().contains(QStringLiteral("audio/mpeg")));
    EXPECT_EQ(root(QStringLiteral("CanQuit")), true);
    EXPECT_EQ(root(QStringLiteral("CanRaise")), true);
    EXPECT_EQ(root(QStringLiteral("HasTrackList")), false);
}

TEST_F(MprisTest, whatNeverChangesIsThere)
{
    for (const char* name : { "CanPlay", "CanPause", "CanControl" })
        EXPECT_EQ(player(QString::fromLatin1(name)), true) << name;
    for (const char* name : { "Rate", "MinimumRate", "MaximumRate" })
        EXPECT_EQ(player(QString::fromLatin1(name)), 1.0) << name;
    EXPECT_FALSE(player(QStringLiteral("Shuffle")).isValid());
    EXPECT_FALSE(player(QStringLiteral("LoopStatus")).isValid());
}

TEST_F(MprisTest, withNothingLoadedThereIsOnlyThePathOfNoTrack)
{
    EXPECT_EQ(player(QStringLiteral("PlaybackStatus")), QStringLiteral("Stopped"));
    EXPECT_EQ(metadata().keys(), QStringList{ QStringLiteral("mpris:trackid") });
    EXPECT_EQ(pathOf(metadata()).path(), QStringLiteral("/org/mpris/MediaPlayer2/TrackList/NoTrack"));
}

TEST_F(MprisTest, everyMethodActsThoughItsCanIsFalse)
{
    handleEverything();
    EXPECT_EQ(player(QStringLiteral("CanGoNext")), false);
    EXPECT_EQ(player(QStringLiteral("CanGoPrevious")), false);
    EXPECT_EQ(player(QStringLiteral("CanSeek")), false);
    for (const char* method : { "Play", "Pause", "PlayPause", "Stop", "Next", "Previous" })
        EXPECT_EQ(callPlayer(QString::fromLatin1(method)).type(), QDBusMessage::ReplyMessage) << method;
    callPlayer(QStringLiteral("Seek"), { QVariant::fromValue<qlonglong>(-15'000'000) });
    callPlayer(QStringLiteral("OpenUri"), { QStringLiteral("http://radio.example/x y") });
    EXPECT_EQ(heard().join(u','),
        QStringLiteral("play,pause,toggle,stop,next,previous,skip -15,open http://radio.example/x y"));
}

TEST_F(MprisTest, callsBeforeAnybodyTakesCommandsAreAnsweredAndDoNothing)
{
    for (const char* method : { "Play", "Pause", "PlayPause", "Stop", "Next", "Previous" })
        EXPECT_EQ(callPlayer(QString::fromLatin1(method)).type(), QDBusMessage::ReplyMessage) << method;
    EXPECT_EQ(callRoot(QStringLiteral("Raise")).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(set(QStringLiteral("Volume"), 0.5).type(), QDBusMessage::ReplyMessage);
}

TEST_F(MprisTest, quitIsAnsweredBeforeItIsCarriedOut)
{
    // A program that is gone cannot answer; so the caller would be told of an error.
    controls->setApplicationHandlers(
        { .raise = {}, .quit = [this] { controls.reset(); }, .openUri = {}, .setVolume = {} });
    EXPECT_EQ(callRoot(QStringLiteral("Quit")).type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(waitUntil([this] { return !controls; }));
}

TEST_F(MprisTest, raiseComesForward)
{
    handleEverything();
    callRoot(QStringLiteral("Raise"));
    EXPECT_EQ(heard(), QStringList{ QStringLiteral("raise") });
}

TEST_F(MprisTest, aRadioIsShownByTheSongItsSingerAndTheStation)
{
    controls->publish(radio(), NowPlayingState::Playing);
    const QVariantMap map = metadata();
    EXPECT_EQ(player(QStringLiteral("PlaybackStatus")), QStringLiteral("Playing"));
    EXPECT_EQ(map.value(QStringLiteral("xesam:title")), QStringLiteral("La canzone"));
    EXPECT_EQ(map.value(QStringLiteral("xesam:artist")), QStringList{ QStringLiteral("Chi canta") });
    EXPECT_EQ(map.value(QStringLiteral("xesam:album")), QStringLiteral("Radio Prova"));
    EXPECT_EQ(map.value(QStringLiteral("xesam:genre")), QStringList{ QStringLiteral("Pop") });
    EXPECT_EQ(pathOf(map).path(), QStringLiteral("/com/brenholt/velarin/track/69742dc3a8"));
    EXPECT_EQ(map.size(), 5) << "a live stream has no length, and there is no picture";
}

TEST_F(MprisTest, whatIsNotKnownIsLeftOut)
{
    NowPlaying item;
    item.title = QStringLiteral("Radio Prova");
    item.contentId = QStringLiteral("x");
    controls->publish(item, NowPlayingState::Paused);
    EXPECT_EQ(player(QStringLiteral("PlaybackStatus")), QStringLiteral("Paused"));
    EXPECT_EQ(metadata().keys(), QStringList({ QStringLiteral("mpris:trackid"), QStringLiteral("xesam:title") }));
}

TEST_F(MprisTest, anItemWithoutAnIdStillHasAPath)
{
    NowPlaying item = radio();
    item.contentId.clear();
    controls->publish(item, NowPlayingState::Playing);
    EXPECT_EQ(pathOf(metadata()).path(), QStringLiteral("/com/brenholt/velarin/track/_"));
}

TEST_F(MprisTest, aTitleThatIsNoValidTextDoesNotEndTheConnection)
{
    NowPlaying item = radio();
    item.title = QStringLiteral("Prima") + QChar(0) + QChar(0xD800) + QChar(0xFFFF);
    item.artist = QString(QChar(0xDC00));
    controls->publish(item, NowPlayingState::Playing);
    EXPECT_TRUE(metadata().value(QStringLiteral("xesam:title")).toString().startsWith(QStringLiteral("Prima")));
}

TEST_F(MprisTest, itShowsWhatWasLastPublishedUntilTheNext)
{
    NowPlaying item = radio();
    controls->publish(item, NowPlayingState::Playing);
    item.title = QStringLiteral("Non ancora pubblicata");
    clock.advance(std::chrono::minutes(5));
    EXPECT_EQ(metadata().value(QStringLiteral("xesam:title")), QStringLiteral("La canzone"));
    controls->publish(std::nullopt, NowPlayingState::Stopped);
    EXPECT_EQ(metadata().size(), 1);
}

TEST_F(MprisTest, theVolumeIsReadAsPublishedAndWrittenToTheUsers)
{
    handleEverything();
    controls->publishVolume(0.25);
    EXPECT_EQ(player(QStringLiteral("Volume")), 0.25);
    set(QStringLiteral("Volume"), 0.75);
    EXPECT_EQ(heard(), QStringList{ QStringLiteral("volume 0.75") });
    EXPECT_EQ(player(QStringLiteral("Volume")), 0.25) << "shown when published, not when asked for";
}

TEST_F(MprisTest, aVolumeThatIsNoNumberIsDropped)
{
    handleEverything();
    set(QStringLiteral("Volume"), std::numeric_limits<double>::quiet_NaN());
    set(QStringLiteral("Volume"), std::numeric_limits<double>::infinity());
    EXPECT_TRUE(heard().isEmpty());
}

TEST_F(MprisTest, aRateOfZeroPausesAndAnyOtherIsIgnored)
{
    handleEverything();
    set(QStringLiteral("Rate"), 2.0);
    EXPECT_TRUE(heard().isEmpty());
    set(QStringLiteral("Rate"), 0.0);
    EXPECT_EQ(heard(), QStringList{ QStringLiteral("pause") });
    EXPECT_EQ(player(QStringLiteral("Rate")), 1.0);
}

TEST_F(MprisTest, thePositionRunsOnFromWhatWasPublished)
{
    controls->publish(episode(60.0), NowPlayingState::Playing);
    clock.advance(std::chrono::seconds(5));
    EXPECT_EQ(player(QStringLiteral("Position")), 65'000'000);
    controls->publish(radio(), NowPlayingState::Playing);
    EXPECT_EQ(player(QStringLiteral("Position")), 0) << "a live stream has no place";
}

TEST_F(MprisTest, aPositionIsObeyedOnlyForTheItemShownAndWithinIt)
{
    handleEverything();
    controls->publish(episode(60.0), NowPlayingState::Playing);
    const QDBusObjectPath current = pathOf(metadata());
    EXPECT_EQ(metadata().value(QStringLiteral("mpris:length")), 1'800'000'000LL);
    callPlayer(QStringLiteral("SetPosition"), position(QDBusObjectPath(QStringLiteral("/a/former/track")), 1'000'000));
    callPlayer(QStringLiteral("SetPosition"), position(current, -1));
    callPlayer(QStringLiteral("SetPosition"), position(current, 1'800'000'001));
    EXPECT_TRUE(heard().isEmpty());
    callPlayer(QStringLiteral("SetPosition"), position(current, 0));
    callPlayer(QStringLiteral("SetPosition"), position(current, 1'800'000'000));
    EXPECT_EQ(heard(), QStringList({ QStringLiteral("move 0"), QStringLiteral("move 1800") }));
}

TEST_F(MprisTest, aPositionInNoTrackIsIgnored)
{
    handleEverything();
    callPlayer(QStringLiteral("SetPosition"), position(pathOf(metadata()), 1'000'000));
    EXPECT_TRUE(heard().isEmpty());
}

TEST_F(MprisTest, aRelativeSeekInATrackThatCannotSkipBecomesAPlace)
{
    handleEverything();
    controls->setEnabled(MediaCommand::ChangePosition, true);
    controls->publish(episode(60.0), NowPlayingState::Playing);
    callPlayer(QStringLiteral("Seek"), { QVariant::fromValue<qlonglong>(10'000'000) });
    controls->setEnabled(MediaCommand::SkipForward, true);
    callPlayer(QStringLiteral("Seek"), { QVariant::fromValue<qlonglong>(10'000'000) });
    EXPECT_EQ(heard(), QStringList({ QStringLiteral("move 70"), QStringLiteral("skip 10") }));
}

TEST_F(MprisTest, withTheNameTakenTheSecondIsSilentAndTheFirstStays)
{
    MprisControls second(bus.connect(), clock, executor, bus.folder() + QStringLiteral("/other"));
    second.publish(radio(), NowPlayingState::Playing);
    settle();
    EXPECT_EQ(player(QStringLiteral("PlaybackStatus")), QStringLiteral("Stopped"));
    EXPECT_TRUE(listener.changes.empty());
}

TEST_F(MprisTest, theNameIsGivenBackAtTheEnd)
{
    controls.reset();
    EXPECT_FALSE(desktop.interface()->isServiceRegistered(QStringLiteral("org.mpris.MediaPlayer2.velarin")).value());
}

TEST_F(MprisTest, aBusThatEndsDoesNotEndTheProgram)
{
    bus.stop();
    ASSERT_TRUE(waitUntil([this] { return !desktop.isConnected(); }));
    controls->publish(radio(), NowPlayingState::Playing);
    controls->publish(std::nullopt, NowPlayingState::Stopped);
    controls.reset();
}

TEST(MprisControlsTest, withoutABusNothingIsShownAndNothingFails)
{
    FakeClock clock;
    PoolExecutor executor(1);
    MprisControls controls(QDBusConnection(QStringLiteral("none")), clock, executor, {});
    controls.publish(std::nullopt, NowPlayingState::Stopped);
    controls.publishVolume(0.5);
    bool ranOn = false;
    QMetaObject::invokeMethod(
        qApp, [&] { ranOn = true; }, Qt::QueuedConnection);
    EXPECT_TRUE(waitUntil([&] { return ranOn; }));
}

}
