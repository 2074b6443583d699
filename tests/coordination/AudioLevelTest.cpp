// SPDX-License-Identifier: GPL-3.0-or-later
#include "coordination/AudioLevel.h"

#include "coordination/CoordinationFixture.h"

#include <limits>

namespace velarin::test {

namespace {

const QString key = QStringLiteral("output_volume");

}

class AudioLevelTest : public CoordinationFixture
{
protected:
    float storedLevel(const QJsonValue& stored)
    {
        defaults.stored.insert(key, stored);
        return AudioLevel(defaults, coordinator, controls).user();
    }
};

TEST_F(AudioLevelTest, withNothingStoredItIsFull)
{
    EXPECT_EQ(AudioLevel(defaults, coordinator, controls).user(), 1.0F);
    EXPECT_EQ(AudioLevel(defaults, coordinator, controls).fade(), 1.0F);
}

TEST_F(AudioLevelTest, aStoredVolumeIsClamped)
{
    EXPECT_EQ(storedLevel(1.5), 1.0F);
    EXPECT_EQ(storedLevel(-0.2), 0.0F);
    EXPECT_EQ(storedLevel(1e300), 1.0F);
    EXPECT_EQ(storedLevel(0.3), 0.3F);
    EXPECT_EQ(storedLevel(0), 0.0F);
}

TEST_F(AudioLevelTest, aStoredValueOfAnotherTypeCountsAsFull)
{
    EXPECT_EQ(storedLevel(QStringLiteral("0.5")), 1.0F);
    EXPECT_EQ(storedLevel(false), 1.0F);
}

TEST_F(AudioLevelTest, everyEngineGetsTheProductOfBoth)
{
    AudioLevel audio(defaults, coordinator, controls);

    audio.setUser(0.5F);
    audio.setFade(0.5F);

    for (const Source source : engineSources)
        EXPECT_EQ(engine(source).level, 0.25F);
}

TEST_F(AudioLevelTest, applyingReachesEveryEngineWhicheverIsActive)
{
    defaults.setReal(key, 0.5);
    AudioLevel audio(defaults, coordinator, controls);
    coordinator.activate(Source::podcast);
    for (const Source source : engineSources)
        EXPECT_LT(engine(source).level, 0.0F);

    audio.apply();

    for (const Source source : engineSources)
        EXPECT_EQ(engine(source).level, 0.5F);
}

TEST_F(AudioLevelTest, theUsersVolumeIsStoredAndPublished)
{
    AudioLevel audio(defaults, coordinator, controls);
    EXPECT_EQ(controls.volume, 1.0);

    audio.setUser(0.3F);

    EXPECT_EQ(static_cast<float>(*defaults.real(key)), 0.3F);
    EXPECT_EQ(static_cast<float>(controls.volume), 0.3F);
    EXPECT_EQ(AudioLevel(defaults, coordinator, controls).user(), 0.3F);
}

TEST_F(AudioLevelTest, theStoredVolumeIsPublishedAtTheStart)
{
    EXPECT_EQ(storedLevel(0.25), 0.25F);
    EXPECT_EQ(controls.volume, 0.25);
}

TEST_F(AudioLevelTest, assigningThePresentValueDoesNothing)
{
    AudioLevel audio(defaults, coordinator, controls);
    audio.setUser(0.5F);
    defaults.writes.clear();
    radio.level = -1.0F;
    int announced = 0;
    QObject::connect(&audio, &AudioLevel::userChanged, &audio, [&announced] { ++announced; });

    audio.setUser(0.5F);
    audio.setFade(1.0F);

    EXPECT_TRUE(defaults.writes.isEmpty());
    EXPECT_EQ(announced, 0);
    EXPECT_EQ(radio.level, -1.0F);
}

TEST_F(AudioLevelTest, theFadeIsNeitherStoredNorPublished)
{
    AudioLevel audio(defaults, coordinator, controls);
    audio.setUser(0.5F);
    defaults.writes.clear();
    controls.volume = -1.0;

    audio.setFade(0.2F);

    EXPECT_TRUE(defaults.writes.isEmpty());
    EXPECT_EQ(controls.volume, -1.0);
    EXPECT_EQ(audio.user(), 0.5F);
    EXPECT_EQ(audio.fade(), 0.2F);
}

TEST_F(AudioLevelTest, whatACallerSendsIsClampedAndNoNumberIsIgnored)
{
    AudioLevel audio(defaults, coordinator, controls);
    audio.setUser(-3.0F);
    EXPECT_EQ(audio.user(), 0.0F);
    audio.setUser(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(audio.user(), 0.0F);
    audio.setUser(std::numeric_limits<float>::infinity());
    EXPECT_EQ(audio.user(), 1.0F);
    audio.setFade(2.0F);
    EXPECT_EQ(audio.fade(), 1.0F);
}

}
