// SPDX-License-Identifier: GPL-3.0-or-later
#include "coordination/CoordinationFixture.h"
#include "support/CapturedLog.h"

namespace velarin::test {

using namespace std::chrono_literals;

class PlaybackCoordinatorTest : public CoordinationFixture
{
};

TEST_F(PlaybackCoordinatorTest, everySourceHasItsRawText)
{
    EXPECT_EQ(toText(Source::none), QStringLiteral("none"));
    EXPECT_EQ(toText(Source::radio), QStringLiteral("radio"));
    EXPECT_EQ(toText(Source::podcast), QStringLiteral("podcast"));
    EXPECT_EQ(toText(Source::music), QStringLiteral("music"));
}

TEST_F(PlaybackCoordinatorTest, nothingIsActiveAtFirst)
{
    EXPECT_EQ(coordinator.active(), Source::none);
    EXPECT_EQ(coordinator.activeEngine(), nullptr);
}

TEST_F(PlaybackCoordinatorTest, theFirstSourceTakesTheOutputAndNobodyIsPaused)
{
    coordinator.activate(Source::radio);

    EXPECT_EQ(coordinator.active(), Source::radio);
    EXPECT_EQ(coordinator.activeEngine(), &radio);
    for (const Source source : engineSources)
        EXPECT_TRUE(engine(source).calls.isEmpty());
    EXPECT_EQ(defaults.boolean(wasPlayingKey), true);
}

TEST_F(PlaybackCoordinatorTest, theFormerSourceIsPausedWhileItIsStillActive)
{
    coordinator.activate(Source::radio);
    Source duringPause = Source::none;
    radio.onPause = [&] { duringPause = coordinator.active(); };

    coordinator.activate(Source::podcast);

    EXPECT_EQ(radio.calls, QStringList{ QStringLiteral("pause") });
    EXPECT_EQ(duringPause, Source::radio);
    EXPECT_EQ(coordinator.active(), Source::podcast);
    EXPECT_TRUE(podcasts.calls.isEmpty());
    EXPECT_TRUE(music.calls.isEmpty());
}

TEST_F(PlaybackCoordinatorTest, activatingTheActiveSourceDoesNothingAtAll)
{
    coordinator.activate(Source::radio);
    defaults.writes.clear();
    controls.enabled.clear();
    clock.advance(200s);

    coordinator.activate(Source::radio);

    EXPECT_TRUE(radio.calls.isEmpty());
    EXPECT_TRUE(defaults.writes.isEmpty());
    EXPECT_TRUE(controls.enabled.isEmpty());
    // The heartbeat goes on from its first moment.
    clock.advance(100s);
    EXPECT_EQ(diagnostics.events().size(), 1);
}

TEST_F(PlaybackCoordinatorTest, resigningGivesTheOutputBack)
{
    controls.enabled.insert(MediaCommand::Previous, true);
    coordinator.activate(Source::music);

    coordinator.resign(Source::music);

    EXPECT_EQ(coordinator.active(), Source::none);
    EXPECT_FALSE(controls.enabled.value(MediaCommand::Previous));
    EXPECT_EQ(defaults.boolean(wasPlayingKey), false);
    EXPECT_TRUE(music.calls.isEmpty());
    clock.advance(1h);
    EXPECT_TRUE(diagnostics.events().isEmpty());
}

TEST_F(PlaybackCoordinatorTest, resigningASourceThatIsNotActiveDoesNothing)
{
    coordinator.activate(Source::radio);

    coordinator.resign(Source::music);

    EXPECT_EQ(coordinator.active(), Source::radio);
    EXPECT_EQ(defaults.boolean(wasPlayingKey), true);
    clock.advance(300s);
    EXPECT_EQ(diagnostics.events().size(), 1);
}

TEST_F(PlaybackCoordinatorTest, theHeartbeatLineComesFromTheActiveEngine)
{
    radio.heartbeat = QStringLiteral("Radio · RDS · suona");
    podcasts.heartbeat = QStringLiteral("Podcast · Titolo · 61 s");
    music.heartbeat = QStringLiteral("Musica · Titolo");
    EXPECT_EQ(coordinator.heartbeatLine(), QStringLiteral("Niente in riproduzione"));

    for (const Source source : engineSources) {
        coordinator.activate(source);
        EXPECT_EQ(coordinator.heartbeatLine(), engine(source).heartbeat);
    }
}

TEST_F(PlaybackCoordinatorTest, theLogIsToldWhatPlaysWhenTheHeartbeatFalls)
{
    coordinator.activate(Source::radio);
    clock.advance(100s);
    radio.heartbeat = QStringLiteral("Radio · RDS · suona");

    clock.advance(200s);

    ASSERT_EQ(diagnostics.events().size(), 1);
    EXPECT_EQ(diagnostics.events().first().message, QStringLiteral("Radio · RDS · suona"));
    EXPECT_EQ(diagnostics.events().first().category, DiagnosticCategory::heartbeat);
}

TEST_F(PlaybackCoordinatorTest, theLogMayOutliveTheCoordinator)
{
    {
        PlaybackCoordinator shortLived(controls, diagnostics, defaults);
        shortLived.attach(Source::radio, radio);
        shortLived.activate(Source::radio);
    }

    clock.advance(300s);

    ASSERT_EQ(diagnostics.events().size(), 1);
    EXPECT_EQ(diagnostics.events().first().message, QString());
}

TEST_F(PlaybackCoordinatorTest, theDeveloperLogSaysWhoHandsOverToWhom)
{
    const CapturedLog log;

    coordinator.activate(Source::radio);
    coordinator.activate(Source::radio);
    coordinator.activate(Source::podcast);
    coordinator.resign(Source::podcast);

    EXPECT_EQ(
        log.lines(), (QStringList{ QStringLiteral("com.brenholt.velarin.coordinator: active source: none → radio"),
                         QStringLiteral("com.brenholt.velarin.coordinator: active source: radio → podcast") }));
}

TEST_F(PlaybackCoordinatorTest, aChangeOfSourceIsAnnouncedOnce)
{
    int announced = 0;
    QObject::connect(&coordinator, &PlaybackCoordinator::activeChanged, &coordinator, [&announced] { ++announced; });

    coordinator.activate(Source::radio);
    coordinator.activate(Source::radio);
    EXPECT_EQ(announced, 1);
    coordinator.resign(Source::music);
    EXPECT_EQ(announced, 1);
    coordinator.resign(Source::radio);
    EXPECT_EQ(announced, 2);
}

}
