// SPDX-License-Identifier: GPL-3.0-or-later
// playerctl as a user's key bindings and scripts call it.
#include "platform/freedesktop/MprisTest.h"

namespace velarin::test {

class PlayerctlTest : public MprisTest
{
protected:
    QString playerctl(const QStringList& arguments)
    {
        Child child(QStringLiteral("playerctl"), arguments, bus.environment());
        EXPECT_EQ(child.exitCode(), 0) << arguments.join(u' ').toStdString();
        return child.output().trimmed();
    }

    void SetUp() override
    {
        handleEverything();
        for (const MediaCommand command : { MediaCommand::Next, MediaCommand::Previous, MediaCommand::ChangePosition })
            controls->setEnabled(command, true);
    }
};

TEST_F(PlayerctlTest, itFindsThePlayerAndItsStatus)
{
    EXPECT_EQ(playerctl({ QStringLiteral("--list-all") }), QStringLiteral("velarin"));
    EXPECT_EQ(playerctl({ QStringLiteral("status") }), QStringLiteral("Stopped"));
    controls->publish(radio(), NowPlayingState::Playing);
    EXPECT_EQ(playerctl({ QStringLiteral("status") }), QStringLiteral("Playing"));
}

TEST_F(PlayerctlTest, itShowsTheSong)
{
    controls->publish(radio(), NowPlayingState::Playing);
    const QString format = QStringLiteral("{{artist}} | {{title}} | {{album}}");
    EXPECT_EQ(playerctl({ QStringLiteral("metadata"), QStringLiteral("--format"), format }),
        QStringLiteral("Chi canta | La canzone | Radio Prova"));
}

TEST_F(PlayerctlTest, itsCommandsArrive)
{
    for (const char* command : { "play", "pause", "play-pause", "stop", "next", "previous" })
        playerctl({ QString::fromLatin1(command) });
    EXPECT_EQ(heard().join(u','), QStringLiteral("play,pause,toggle,stop,next,previous"));
}

TEST_F(PlayerctlTest, itReadsAndSetsTheVolume)
{
    controls->publishVolume(0.5);
    EXPECT_EQ(playerctl({ QStringLiteral("volume") }), QStringLiteral("0.500000"));
    playerctl({ QStringLiteral("volume"), QStringLiteral("0.25") });
    EXPECT_EQ(heard(), QStringList{ QStringLiteral("volume 0.25") });
}

TEST_F(PlayerctlTest, itOpensAnAddress)
{
    playerctl({ QStringLiteral("open"), QStringLiteral("http://radio.example/live.mp3") });
    EXPECT_EQ(heard(), QStringList{ QStringLiteral("open http://radio.example/live.mp3") });
}

TEST_F(PlayerctlTest, itReadsAndSetsThePlace)
{
    controls->publish(episode(90.0), NowPlayingState::Paused);
    EXPECT_TRUE(playerctl({ QStringLiteral("position") }).startsWith(QStringLiteral("90")));
    playerctl({ QStringLiteral("position"), QStringLiteral("120") });
    EXPECT_EQ(heard(), QStringList{ QStringLiteral("move 120") });
}

TEST_F(PlayerctlTest, itFollowsEachChangeOnce)
{
    Child follower(
        QStringLiteral("playerctl"), { QStringLiteral("--follow"), QStringLiteral("status") }, bus.environment());
    ASSERT_FALSE(follower.line(QStringLiteral("Stopped")).isEmpty());
    controls->publish(radio(), NowPlayingState::Playing);
    ASSERT_FALSE(follower.line(QStringLiteral("Playing")).isEmpty());
    controls->publish(radio(), NowPlayingState::Playing);
    controls->publish(radio(), NowPlayingState::Paused);
    ASSERT_FALSE(follower.line(QStringLiteral("Paused")).isEmpty());
    EXPECT_EQ(follower.output(), QStringLiteral("Stopped\nPlaying\nPaused\n"));
}

}
