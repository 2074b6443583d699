// SPDX-License-Identifier: GPL-3.0-or-later
#include "coordination/Transport.h"

#include "coordination/CoordinationFixture.h"

namespace velarin::test {

class TransportTest : public CoordinationFixture
{
};

TEST_F(TransportTest, withNothingActiveTogglingBringsTheLastStationBack)
{
    Transport::toggle(coordinator);

    EXPECT_EQ(resumed, 1);
    EXPECT_FALSE(Transport::isPlaying(coordinator));
    EXPECT_FALSE(Transport::canSkip(coordinator));
}

TEST_F(TransportTest, togglingPausesWhatSoundsAndResumesWhatDoesNot)
{
    for (const Source source : engineSources) {
        coordinator.activate(source);
        forget();
        engine(source).sounding = true;
        Transport::toggle(coordinator);
        engine(source).sounding = false;
        Transport::toggle(coordinator);
        EXPECT_EQ(engine(source).calls, (QStringList{ QStringLiteral("pause"), QStringLiteral("resume") }));
    }
    EXPECT_EQ(resumed, 0);
}

TEST_F(TransportTest, togglingDuringAReconnectPauses)
{
    coordinator.activate(Source::radio);
    // Connecting: not playing yet, and its toggle would pause it.
    radio.playing = false;
    radio.sounding = true;

    Transport::toggle(coordinator);

    EXPECT_EQ(radio.calls, QStringList{ QStringLiteral("pause") });
    EXPECT_FALSE(Transport::isPlaying(coordinator));
}

TEST_F(TransportTest, onlyAQueueOfSeveralCanBeSkipped)
{
    for (const Source source : engineSources) {
        coordinator.activate(source);
        engine(source).queue = 1;
        EXPECT_FALSE(Transport::canSkip(coordinator));
        engine(source).queue = 2;
        EXPECT_TRUE(Transport::canSkip(coordinator));
    }
}

TEST_F(TransportTest, itPlaysWhileTheActiveEngineDoes)
{
    for (const Source source : engineSources) {
        coordinator.activate(source);
        EXPECT_FALSE(Transport::isPlaying(coordinator));
        engine(source).playing = true;
        EXPECT_TRUE(Transport::isPlaying(coordinator));
    }
}

}
