// SPDX-License-Identifier: GPL-3.0-or-later
// A station with four seconds of reserve, at which the connection breaks in the seventh second. A connection has to
// give ten seconds of sound before it is mended, and the mended sound is heard when the reserve has been played: so
// these listen for a little longer than that.
#include "live/ears/SideBySide.h"

#include <gtest/gtest.h>

namespace velarin::test {

namespace {

constexpr double listened = 12.0;

const std::vector<Hearing> hearings{
    { "aCleanClose", "/close/6.5", Codec::Mp3, listened },
    { "aReset", "/reset/6.5", Codec::Mp3, listened },
    { "anEndlessStall", "/stall/6.5", Codec::Mp3, listened },
    { "aStallOfTwelveSeconds", "/stall/6.5/12", Codec::Mp3, listened },
    { "aShortLivedAddress", "/token/6.5", Codec::Mp3, listened },
    { "aCloseOfAac", "/close/6.5", Codec::AacAdts, listened },
    { "aCloseOfVorbis", "/close/6.5", Codec::OggVorbis, listened },
    { "aCloseOfOpus", "/reset/6.5", Codec::OggOpus, listened },
};

}

class MendEarsTest : public testing::TestWithParam<std::string>
{
protected:
    static void SetUpTestSuite() { results = hearSideBySide(hearings); }
    static inline std::map<std::string, Heard> results;
};

TEST_P(MendEarsTest, isNotHeard)
{
    const Heard& heard = results.at(GetParam());
    SCOPED_TRACE(inFigures(heard));
    ASSERT_TRUE(heard.report.firstSound.has_value());
    EXPECT_LE(heard.report.longestSilence, 0.05 + *heard.report.firstSound);
    EXPECT_LE(heard.report.longestGap, 0.05);
    EXPECT_GE(heard.report.heard, listened - 0.6);
    EXPECT_LE(heard.report.lost, 0.05);
    EXPECT_LE(heard.report.repeated, 0.05);
    EXPECT_FALSE(heard.events.contains(QStringLiteral("stalled")));
    EXPECT_EQ(heard.events.count(QStringLiteral("waiting")), 1);
}

INSTANTIATE_TEST_SUITE_P(Each, MendEarsTest, testing::ValuesIn(namesOf(hearings)),
    [](const testing::TestParamInfo<std::string>& name) { return name.param; });

}
