// SPDX-License-Identifier: GPL-3.0-or-later
// Against a real Icecast.
#include "live/ears/Icecast.h"
#include "live/ears/Listening.h"
#include "live/ears/Station.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <array>

namespace velarin::test {

class IcecastEarsTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(icecast.start()); }

    [[nodiscard]] std::unique_ptr<IcecastSource> feed(Codec codec, const QByteArray& mount)
    {
        return std::make_unique<IcecastSource>(
            icecast.port(), mount, Station::contentType(codec), Station::programme(codec));
    }

    Icecast icecast;
};

TEST_F(IcecastEarsTest, playsEachCodec)
{
    constexpr std::array codecs{ Codec::Mp3, Codec::AacAdts, Codec::OggVorbis, Codec::OggOpus, Codec::OggFlac };
    for (const Codec codec : codecs)
        (void)Station::programme(codec);
    for (const Codec codec : codecs) {
        const QByteArray mount = "/codec" + QByteArray::number(static_cast<int>(codec));
        const auto source = feed(codec, mount);
        listenFor(0.5);
        Listening listening(0);
        listening.play(icecast.url(mount));
        listenFor(4.0);
        const EarReport heard = listening.heard();
        SCOPED_TRACE(mount.toStdString() + listening.events.join(QStringLiteral(", ")).toStdString());
        ASSERT_TRUE(heard.firstSound.has_value());
        // Icecast makes new pages of Vorbis and gives a new listener no burst of them.
        EXPECT_LE(*heard.firstSound, codec == Codec::OggVorbis ? 2.5 : 1.0);
        EXPECT_LE(heard.longestGap, 0.05);
        EXPECT_GE(heard.heard, 3.9 - *heard.firstSound - 0.3);
        EXPECT_LE(heard.lost + heard.repeated, 0.06);
    }
}

TEST_F(IcecastEarsTest, aSourceCutAndBroughtBackIsNotHeard)
{
    auto source = feed(Codec::Mp3, "/live");
    listenFor(0.5);
    Listening listening(0);
    listening.play(icecast.url("/live"));
    listenFor(7.0);
    source.reset();
    listenFor(1.5);
    source = feed(Codec::Mp3, "/live");
    listenFor(5.0);
    const EarReport heard = listening.heard();
    SCOPED_TRACE(listening.events.join(QStringLiteral(", ")).toStdString());
    EXPECT_LE(heard.longestGap, 0.05);
    EXPECT_FALSE(listening.told(QStringLiteral("stalled")));
    EXPECT_GE(heard.heard, 12.5);
}

TEST_F(IcecastEarsTest, aKilledAndRestartedServerIsNotHeard)
{
    auto source = feed(Codec::OggOpus, "/live");
    listenFor(0.5);
    Listening listening(0);
    listening.play(icecast.url("/live"));
    listenFor(7.0);
    icecast.kill();
    ASSERT_TRUE(icecast.start());
    source = feed(Codec::OggOpus, "/live");
    listenFor(6.0);
    const EarReport heard = listening.heard();
    SCOPED_TRACE(listening.events.join(QStringLiteral(", ")).toStdString());
    EXPECT_LE(heard.longestGap, 0.05);
    EXPECT_FALSE(listening.told(QStringLiteral("stalled")));
}

TEST_F(IcecastEarsTest, aMountWhoseSourceIsAwayIsWaitedFor)
{
    auto source = feed(Codec::Mp3, "/live");
    listenFor(0.5);
    Listening listening(0);
    listening.play(icecast.url("/live"));
    ASSERT_TRUE(waitUntil([&] { return listening.told(QStringLiteral("playing")); }));
    source.reset();
    listenFor(0.5);
    listening.play(icecast.url("/live"));
    listenFor(1.0);
    EXPECT_TRUE(listening.told(QStringLiteral("failed: closed 0")));
    EXPECT_FALSE(listening.told(QStringLiteral("http 404")));
}

}
