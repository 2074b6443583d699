// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/MprisTest.h"

#include <QDBusArgument>

namespace velarin::test {

class MprisChangesTest : public MprisTest
{
protected:
    // The names of what was told since the last call, signal by signal.
    QString told()
    {
        settle();
        QStringList signals_;
        for (const QVariantMap& changed : listener.changes)
            signals_ << changed.keys().join(u'+');
        listener.changes.clear();
        return signals_.join(u' ');
    }
};

TEST_F(MprisChangesTest, startingToPlayTellsTheStatusAndTheMetadataInOneSignal)
{
    controls->publish(radio(), NowPlayingState::Playing);
    settle();
    ASSERT_EQ(listener.changes.size(), 1U);
    const QVariantMap changed = listener.changes.front();
    EXPECT_EQ(changed.keys(), QStringList({ QStringLiteral("Metadata"), QStringLiteral("PlaybackStatus") }));
    EXPECT_EQ(changed.value(QStringLiteral("PlaybackStatus")), QStringLiteral("Playing"));
    EXPECT_EQ(qdbus_cast<QVariantMap>(changed.value(QStringLiteral("Metadata"))), metadata());
}

TEST_F(MprisChangesTest, theSameAgainTellsNothing)
{
    controls->publish(radio(), NowPlayingState::Playing);
    controls->publishVolume(0.5);
    controls->setEnabled(MediaCommand::Next, true);
    EXPECT_EQ(told(), QStringLiteral("CanGoNext+Metadata+PlaybackStatus+Volume"));
    controls->publish(radio(), NowPlayingState::Playing);
    controls->publishVolume(0.5);
    controls->setEnabled(MediaCommand::Next, true);
    EXPECT_EQ(told(), QString());
}

TEST_F(MprisChangesTest, onlyWhatChangedIsTold)
{
    controls->publish(radio(), NowPlayingState::Playing);
    EXPECT_EQ(told(), QStringLiteral("Metadata+PlaybackStatus"));
    controls->publish(radio(), NowPlayingState::Paused);
    EXPECT_EQ(told(), QStringLiteral("PlaybackStatus"));
    NowPlaying next = radio();
    next.title = QStringLiteral("Un'altra");
    controls->publish(next, NowPlayingState::Paused);
    EXPECT_EQ(told(), QStringLiteral("Metadata"));
    controls->publishVolume(0.4);
    EXPECT_EQ(told(), QStringLiteral("Volume"));
    controls->publish(std::nullopt, NowPlayingState::Stopped);
    EXPECT_EQ(told(), QStringLiteral("Metadata+PlaybackStatus"));
}

TEST_F(MprisChangesTest, eachCommandHasItsCan)
{
    controls->setEnabled(MediaCommand::Next, true);
    EXPECT_EQ(told(), QStringLiteral("CanGoNext"));
    controls->setEnabled(MediaCommand::Previous, true);
    EXPECT_EQ(told(), QStringLiteral("CanGoPrevious"));
    controls->setEnabled(MediaCommand::ChangePosition, true);
    EXPECT_EQ(told(), QStringLiteral("CanSeek"));
    controls->setEnabled(MediaCommand::SkipForward, true);
    controls->setEnabled(MediaCommand::SkipBackward, true);
    EXPECT_EQ(told(), QString()) << "skipping has no property in the standard";
    EXPECT_EQ(player(QStringLiteral("CanSeek")), true);
}

TEST_F(MprisChangesTest, aChangeTakenBackInTheSameTurnIsNotTold)
{
    controls->setEnabled(MediaCommand::Next, true);
    controls->setEnabled(MediaCommand::Next, false);
    EXPECT_EQ(told(), QString());
}

TEST_F(MprisChangesTest, runningOnIsNotToldAndAJumpIs)
{
    controls->publish(episode(0.0), NowPlayingState::Playing);
    clock.advance(std::chrono::seconds(30));
    controls->publish(episode(30.3), NowPlayingState::Playing);
    EXPECT_EQ(told(), QStringLiteral("Metadata+PlaybackStatus"));
    EXPECT_TRUE(listener.jumps.empty());
    controls->publish(episode(300.0), NowPlayingState::Playing);
    EXPECT_EQ(told(), QString());
    EXPECT_EQ(listener.jumps, std::vector<qlonglong>{ 300'000'000 });
}

TEST_F(MprisChangesTest, anEpisodeTakenUpWhereItWasLeftIsAJump)
{
    controls->publish(radio(), NowPlayingState::Playing);
    controls->publish(episode(600.0), NowPlayingState::Playing);
    settle();
    EXPECT_EQ(listener.jumps, std::vector<qlonglong>{ 600'000'000 });
}

}
