// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoundBench.h"

#include <QFile>

namespace velarin::test {
namespace {

// It costs more memory than all the rest of the program.
bool isLibavLoaded()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("libavcodec");
}

class CodecTest : public SoundTest, public testing::WithParamInterface<Codec>
{
};

TEST_P(CodecTest, isHeardWholeAndOnce)
{
    const QByteArray sound = Programme{ .codec = GetParam(), .length = 3.0 }.encoded();
    ASSERT_FALSE(sound.isEmpty());
    const auto branch = open(formatOf(GetParam()));
    feeder.give(branch, sound, true);
    pipeline->play();
    ASSERT_TRUE(untilDry());
    const EarReport report = heardSoFar();
    EXPECT_NEAR(report.heard, 3.0, 0.1);
    EXPECT_LT(report.longestGap, 0.02);
    EXPECT_LT(report.lost, 0.05);
    EXPECT_LT(report.repeated, 0.05);
    EXPECT_EQ(report.secondsHeard, (std::vector<int>{ 0, 1, 2 }));
    EXPECT_EQ(feeder.finished, (std::vector<live::BranchId>{ branch }));
    EXPECT_EQ(feeder.heard, 1);
    EXPECT_NEAR(pipeline->heardSeconds(), report.heard, 0.1);
    EXPECT_FALSE(isLibavLoaded());
}

INSTANTIATE_TEST_SUITE_P(Each, CodecTest,
    testing::Values(Codec::Mp3, Codec::AacAdts, Codec::OggVorbis, Codec::OggOpus, Codec::OggFlac, Codec::Flac));

}
}
