// SPDX-License-Identifier: GPL-3.0-or-later
// What changes under way: the codec, the rate, the song of an Ogg, and a server that is gone for a while.
#include "live/ears/SideBySide.h"
#include "support/server/Answers.h"

#include <gtest/gtest.h>

namespace velarin::test {

namespace {

// A server that sends bytes for ever at their pace.
struct Piece
{
    QByteArray bytes;
    double seconds;
    QByteArray type;
};

Piece joined(const std::vector<Programme>& parts, const QByteArray& type)
{
    Piece piece{ {}, 0.0, type };
    for (const Programme& part : parts) {
        piece.bytes += part.encoded();
        piece.seconds += part.length;
    }
    return piece;
}

// Listens to one such server, from the beginning of its bytes.
Heard hear(const Piece& piece, double seconds, qsizetype burst)
{
    const auto programme =
        std::make_shared<StationProgramme>(piece.bytes, static_cast<double>(piece.bytes.size()) / piece.seconds, 4.0);
    ScriptedServer server([&](const ServerRequest&) {
        Answer answer = stationAnswer(programme, piece.type);
        answer.burst = burst;
        return answer;
    });
    Listening listening(0);
    listening.play(server.url("/live"));
    listenFor(seconds);
    return { listening.heard(), listening.events, server.requests() };
}

}

TEST(ChangeEarsTest, theCodecChangesOnTheReconnectWithoutSilence)
{
    const auto results =
        hearSideBySide({ { "codec", "/codec/6.5", Codec::Mp3, 12.0 }, { "back", "/codec/6.5", Codec::AacAdts, 12.0 } });
    for (const auto& [name, heard] : results) {
        SCOPED_TRACE(name + inFigures(heard));
        ASSERT_TRUE(heard.report.firstSound.has_value());
        EXPECT_LE(heard.report.longestGap, 0.05);
        EXPECT_GE(heard.report.heard, 11.3);
        EXPECT_FALSE(heard.events.contains(QStringLiteral("stalled")));
    }
}

TEST(ChangeEarsTest, theSampleRateChangesWithinTheStream)
{
    const Piece piece = joined({ { .codec = Codec::Mp3, .framesPerSecond = 44100, .length = 5.0 },
                                   { .codec = Codec::Mp3, .framesPerSecond = 48000, .from = 5.0, .length = 15.0 } },
        "audio/mpeg");
    const Heard heard = hear(piece, 9.0, 64 * 1024);
    SCOPED_TRACE(inFigures(heard));
    ASSERT_TRUE(heard.report.firstSound.has_value());
    EXPECT_LE(heard.report.longestGap, 0.1);
    EXPECT_LE(heard.report.lost + heard.report.repeated, 0.3);
    EXPECT_GE(heard.report.heard, 8.0);
}

TEST(ChangeEarsTest, aChainedOggPlaysOnAndTellsItsTitles)
{
    const Piece piece =
        joined({ { .codec = Codec::OggVorbis, .length = 5.0, .title = "Uno", .artist = "Prima" },
                   { .codec = Codec::OggVorbis, .from = 5.0, .length = 5.0, .title = "Due", .artist = "Seconda" },
                   { .codec = Codec::OggVorbis, .from = 10.0, .length = 20.0, .title = "Tre", .artist = "Terza" } },
            "application/ogg");
    const Heard heard = hear(piece, 9.5, 64 * 1024);
    SCOPED_TRACE(inFigures(heard));
    ASSERT_TRUE(heard.report.firstSound.has_value());
    EXPECT_LE(heard.report.longestGap, 0.1);
    EXPECT_GE(heard.report.heard, 8.5);
    EXPECT_TRUE(heard.events.contains(QStringLiteral("title Prima - Uno")));
    EXPECT_TRUE(heard.events.contains(QStringLiteral("title Seconda - Due")));
}

TEST(ChangeEarsTest, aServerGoneForAWhileIsHeardAgainSoonAfterItIsBack)
{
    const auto results = hearSideBySide({ { "503", "/restart/6.5/7/503", Codec::Mp3, 17.0 },
        { "404", "/restart/6.5/7/404", Codec::Mp3, 17.0 }, { "refuse", "/restart/6.5/7/refuse", Codec::Mp3, 17.0 } });
    for (const auto& [name, heard] : results) {
        SCOPED_TRACE(name + inFigures(heard));
        ASSERT_TRUE(heard.report.firstSound.has_value());
        // Four of the seven seconds are in reserve; two seconds for the asking and the second of sound to go on.
        EXPECT_LE(heard.report.longestGap, 3.0 + 2.0);
        EXPECT_GE(heard.report.longestGap, 2.0);
        EXPECT_EQ(heard.events.count(QStringLiteral("stalled")), 1);
        EXPECT_FALSE(heard.events.contains(QStringLiteral("ended")));
    }
}

TEST(ChangeEarsTest, aTrickleIsNeverToldAsPlaying)
{
    const auto results = hearSideBySide({ { "trickle", "/trickle/200?burst=0", Codec::Mp3, 6.0 } });
    EXPECT_FALSE(results.at("trickle").events.contains(QStringLiteral("playing")));
    EXPECT_FALSE(results.at("trickle").report.firstSound.has_value());
}

}
