// SPDX-License-Identifier: GPL-3.0-or-later
// What servers answer: ways of sending sound, and things that are no sound.
#include "live/ears/SideBySide.h"

#include <gtest/gtest.h>

#include <cctype>

namespace velarin::test {

namespace {

constexpr double listened = 4.0;

const std::vector<Hearing> soundHearings{
    { "anOrdinaryStation", "/ok" },
    { "withTitles", "/ok?metaint=8192" },
    { "http10", "/ok?protocol=HTTP/1.0" },
    { "chunked", "/ok?chunked=1" },
    { "icy", "/ok?protocol=ICY&metaint=8192" },
    { "aFalseInterval", "/lie" },
    { "aWrongType", "/ok?type=text/html" },
    { "aRedirect", "/redirect/302" },
    { "aPermanentRedirect", "/redirect/301" },
    { "anM3u", "/m3u" },
    { "aPls", "/pls" },
    { "aPlaylistInAPlaylist", "/m3u?to=/pls" },
    { "noBurst", "/ok?burst=0" },
    { "aBurstOf1", "/ok?burst=1" },
    { "aBurstOf16", "/ok?burst=16" },
    { "aBurstOf256", "/ok?burst=256" },
    { "aac", "/ok", Codec::AacAdts },
    { "vorbis", "/ok", Codec::OggVorbis },
    { "opus", "/ok", Codec::OggOpus },
    { "oggFlac", "/ok", Codec::OggFlac },
};

const std::vector<Hearing> silentHearings{
    { "gst-stream 5: html", "/html", Codec::Mp3, 2.0 },
    { "gst-stream 5: html as audio", "/html?type=audio/mpeg", Codec::Mp3, 2.0 },
    { "gst-stream 5: text", "/text", Codec::Mp3, 2.0 },
    { "gst-stream 5: a picture", "/picture", Codec::Mp3, 2.0 },
    { "gst-stream 4: an empty body", "/empty", Codec::Mp3, 2.0 },
    { "gst-stream 5: garbage", "/garbage", Codec::Mp3, 8.0 },
    { "http 404: not found", "/status/404", Codec::Mp3, 2.0 },
    { "http 410: gone", "/status/410", Codec::Mp3, 2.0 },
    { "http 403: forbidden", "/status/403", Codec::Mp3, 2.0 },
    { "http 500: an error", "/status/500", Codec::Mp3, 2.0 },
    { "http 503: unavailable", "/status/503", Codec::Mp3, 2.0 },
    { "http 2: a loop", "/loop", Codec::Mp3, 2.0 },
};

std::string lettersOf(const std::string& name)
{
    std::string letters;
    for (const char letter : name) {
        if (std::isalnum(static_cast<unsigned char>(letter)))
            letters += letter;
    }
    return letters;
}

}

class SoundEarsTest : public testing::TestWithParam<std::string>
{
protected:
    static void SetUpTestSuite() { results = hearSideBySide(soundHearings); }
    static inline std::map<std::string, Heard> results;
};

TEST_P(SoundEarsTest, isHeardWithoutABreak)
{
    const Heard& heard = results.at(GetParam());
    SCOPED_TRACE(inFigures(heard));
    ASSERT_TRUE(heard.report.firstSound.has_value());
    EXPECT_LE(*heard.report.firstSound, 1.5);
    EXPECT_LE(heard.report.longestGap, 0.05);
    EXPECT_GE(heard.report.heard, listened - 1.5);
    EXPECT_LE(heard.report.lost, 0.06);
    EXPECT_LE(heard.report.repeated, 0.06);
    EXPECT_FALSE(heard.events.contains(QStringLiteral("stalled")));
}

INSTANTIATE_TEST_SUITE_P(Each, SoundEarsTest, testing::ValuesIn(namesOf(soundHearings)),
    [](const testing::TestParamInfo<std::string>& name) { return name.param; });

class SilentEarsTest : public testing::TestWithParam<std::string>
{
protected:
    static void SetUpTestSuite() { results = hearSideBySide(silentHearings); }
    static inline std::map<std::string, Heard> results;
};

// The name of each begins with the error that it has to end in.
TEST_P(SilentEarsTest, failsWithItsCauseAndIsNeverHeard)
{
    const Heard& heard = results.at(GetParam());
    SCOPED_TRACE(inFigures(heard));
    const QString cause = QString::fromStdString(GetParam()).section(u':', 0, 0);
    EXPECT_TRUE(heard.events.contains(QStringLiteral("failed: ") + cause));
    EXPECT_FALSE(heard.events.contains(QStringLiteral("playing")));
    EXPECT_FALSE(heard.report.firstSound.has_value());
    EXPECT_EQ(heard.events.filter(QStringLiteral("failed")).size(), 1);
}

INSTANTIATE_TEST_SUITE_P(Each, SilentEarsTest, testing::ValuesIn(namesOf(silentHearings)),
    [](const testing::TestParamInfo<std::string>& name) { return lettersOf(name.param); });

}
