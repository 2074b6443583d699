// SPDX-License-Identifier: GPL-3.0-or-later
#include "coordination/RemoteCommands.h"

#include "coordination/CoordinationFixture.h"

namespace velarin::test {

class RemoteCommandsTest : public CoordinationFixture
{
protected:
    struct Key
    {
        std::function<void()> press;
        QString operation;
    };

    void SetUp() override { coordinator.configureRemoteCommands(); }

    // The six keys that mean the same for every engine, and what each asks of it.
    std::vector<Key> keys()
    {
        return {
            { controls.handlers.play, QStringLiteral("resume") },
            { controls.handlers.pause, QStringLiteral("pause") },
            { controls.handlers.togglePlayPause, QStringLiteral("togglePlayback") },
            { controls.handlers.stop, QStringLiteral("stop") },
            { controls.handlers.next, QStringLiteral("next") },
            { controls.handlers.previous, QStringLiteral("previous") },
        };
    }
};

TEST_F(RemoteCommandsTest, everyKeyGoesToTheActiveEngineAlone)
{
    for (const Source active : engineSources) {
        coordinator.activate(active);
        for (const Key& key : keys()) {
            forget();
            key.press();
            for (const Source source : engineSources) {
                const QStringList expected = source == active ? QStringList{ key.operation } : QStringList();
                EXPECT_EQ(engine(source).calls, expected);
            }
        }
    }
    EXPECT_EQ(resumed, 0);
}

TEST_F(RemoteCommandsTest, everyKeyWithNothingActiveBringsTheLastStationBack)
{
    int pressed = 0;
    for (const Key& key : keys()) {
        key.press();
        EXPECT_EQ(resumed, ++pressed) << qPrintable(key.operation);
    }
    EXPECT_EQ(coordinator.active(), Source::none);
    for (const Source source : engineSources)
        EXPECT_TRUE(engine(source).calls.isEmpty());
}

TEST_F(RemoteCommandsTest, theNextKeyWithNothingActiveActsAlthoughItShowsAsDisabled)
{
    EXPECT_FALSE(controls.enabled.value(MediaCommand::Next, true));

    controls.handlers.next();

    EXPECT_EQ(resumed, 1);
}

TEST_F(RemoteCommandsTest, skippingSeeksInTheEpisodeWhateverIsActive)
{
    podcasts.place = 100.0;
    for (const Source active : engineSources) {
        coordinator.activate(active);
        forget();
        controls.handlers.skip(30.0);
        controls.handlers.skip(-15.0);
        EXPECT_EQ(podcasts.calls, (QStringList{ QStringLiteral("seek 130"), QStringLiteral("seek 85") }));
        EXPECT_TRUE(radio.calls.isEmpty());
        EXPECT_TRUE(music.calls.isEmpty());
    }
}

TEST_F(RemoteCommandsTest, aPlaceIsSoughtInTheTrackIfMusicIsActiveElseInTheEpisode)
{
    struct
    {
        Source active;
        FakeEngine& target;
    } const rows[] = {
        { Source::none, podcasts },
        { Source::radio, podcasts },
        { Source::podcast, podcasts },
        { Source::music, music },
    };
    for (const auto& row : rows) {
        coordinator.activate(row.active);
        forget();
        controls.handlers.changePosition(42.5);
        for (const Source source : engineSources) {
            const bool isTarget = &engine(source) == &row.target;
            EXPECT_EQ(engine(source).calls, isTarget ? QStringList{ QStringLiteral("seek 42.5") } : QStringList());
        }
    }
}

TEST_F(RemoteCommandsTest, theOfferFollowsTheSourceAndItsQueue)
{
    struct
    {
        Source active;
        qsizetype queue;
        bool skip;
        bool changePosition;
        bool next;
        bool previous;
    } const rows[] = {
        { Source::none, 0, false, false, false, false },
        { Source::none, 2, false, false, false, false },
        { Source::radio, 0, false, false, false, false },
        { Source::radio, 1, false, false, false, false },
        { Source::radio, 2, false, false, true, true },
        { Source::podcast, 1, true, true, false, false },
        { Source::podcast, 2, true, true, true, true },
        { Source::music, 0, false, true, false, true },
        { Source::music, 1, false, true, false, true },
        { Source::music, 2, false, true, true, true },
    };
    for (const auto& row : rows) {
        QMap<MediaCommand, bool> offered;
        for (const auto& [command, on] : offeredCommands(row.active, row.queue))
            offered.insert(command, on);
        const QMap<MediaCommand, bool> expected{ { MediaCommand::SkipForward, row.skip },
            { MediaCommand::SkipBackward, row.skip }, { MediaCommand::ChangePosition, row.changePosition },
            { MediaCommand::Next, row.next }, { MediaCommand::Previous, row.previous } };
        EXPECT_EQ(offered, expected) << qPrintable(toText(row.active)) << " with " << row.queue;
    }
}

TEST_F(RemoteCommandsTest, wiringOffersNothingWhileNothingIsActive)
{
    EXPECT_EQ(controls.enabled.size(), 5);
    for (const bool on : controls.enabled)
        EXPECT_FALSE(on);
}

TEST_F(RemoteCommandsTest, theKeysAreWiredOnce)
{
    controls.handlers = {};

    coordinator.configureRemoteCommands();

    EXPECT_FALSE(controls.handlers.play);
}

TEST_F(RemoteCommandsTest, aRadioWithOneStationLeavesNextAndPreviousOff)
{
    radio.queue = 1;
    coordinator.activate(Source::radio);
    EXPECT_FALSE(controls.enabled.value(MediaCommand::Next, true));
    EXPECT_FALSE(controls.enabled.value(MediaCommand::Previous, true));

    radio.queue = 2;
    coordinator.refreshCommands();
    EXPECT_TRUE(controls.enabled.value(MediaCommand::Next));
    EXPECT_TRUE(controls.enabled.value(MediaCommand::Previous));
}

TEST_F(RemoteCommandsTest, keysForAnEngineThatIsNotThereDoNothing)
{
    PlaybackCoordinator radioOnly(controls, diagnostics, defaults);
    radioOnly.attach(Source::radio, radio);
    radioOnly.configureRemoteCommands();
    radioOnly.activate(Source::radio);

    controls.handlers.skip(30.0);
    controls.handlers.changePosition(3.0);

    EXPECT_TRUE(radio.calls.isEmpty());
    EXPECT_TRUE(podcasts.calls.isEmpty());
}

}
