// SPDX-License-Identifier: GPL-3.0-or-later
// The sound server, killed and started again.
#include "live/ears/Listening.h"
#include "live/ears/Station.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

namespace velarin::test {

class DeviceEarsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        listening.emplace(0);
        listening->play(station.url("/ok"));
        ASSERT_TRUE(waitUntil([this] { return listening->told(QStringLiteral("playing")); }));
        listenFor(2.0);
    }

    Station station;
    std::optional<Listening> listening;
};

TEST_F(DeviceEarsTest, aSoundServerThatIsBackWithinASecondGoesOn)
{
    SoundServer::shared().kill();
    ASSERT_TRUE(SoundServer::shared().start());
    listenFor(4.0);
    SCOPED_TRACE(listening->events.join(QStringLiteral(", ")).toStdString());
    EXPECT_FALSE(listening->told(QStringLiteral("paused")));
    const EarReport heard = listening->heard();
    EXPECT_GE(*heard.lastSound, heard.recorded - 0.5) << "it sounds again";
}

TEST_F(DeviceEarsTest, aSoundServerGoneForGoodIsToldAsPaused)
{
    SoundServer::shared().kill();
    EXPECT_TRUE(waitUntil([this] { return listening->told(QStringLiteral("paused")); }));
    ASSERT_TRUE(SoundServer::shared().start());
    listening->events.clear();
    listening->player->play();
    EXPECT_TRUE(waitUntil([this] { return listening->told(QStringLiteral("playing")); }))
        << listening->events.join(QStringLiteral(", ")).toStdString();
}

TEST_F(DeviceEarsTest, withoutASoundServerTheItemFails)
{
    listening.reset();
    listening.emplace(0);
    SoundServer::shared().kill();
    listening->play(station.url("/ok"));
    EXPECT_TRUE(
        waitUntil([this] { return !listening->events.filter(QStringLiteral("failed: gst-resource")).isEmpty(); }));
    EXPECT_FALSE(listening->told(QStringLiteral("playing")));
    ASSERT_TRUE(SoundServer::shared().start());
}

}
