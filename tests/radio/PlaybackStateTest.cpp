// SPDX-License-Identifier: GPL-3.0-or-later
#include "RadioWorld.h"

namespace velarin::test {

TEST(PlaybackState, failuresAreNamedByTheirCase)
{
    EXPECT_EQ(toText(Kind::timeout), u"timeout"_s);
    EXPECT_EQ(toText(Kind::network), u"network"_s);
    EXPECT_EQ(toText(Kind::offline), u"offline"_s);
    EXPECT_EQ(toText(Kind::notFound), u"notFound"_s);
    EXPECT_EQ(toText(Kind::unsupported), u"unsupported"_s);
    EXPECT_EQ(toText(Kind::unknown), u"unknown"_s);
}

TEST(PlaybackState, statesAreNamedForTheLog)
{
    EXPECT_EQ(toText(PlaybackState(Idle{})), u"idle"_s);
    EXPECT_EQ(toText(PlaybackState(Connecting{ 2, 5 })), u"connecting(2, 5)"_s);
    EXPECT_EQ(toText(PlaybackState(Buffering{})), u"buffering"_s);
    EXPECT_EQ(toText(PlaybackState(Playing{})), u"playing"_s);
    EXPECT_EQ(toText(PlaybackState(Paused{})), u"paused"_s);
    EXPECT_EQ(toText(PlaybackState(Failed{ { Kind::notFound, u"x"_s } })), u"failed(notFound)"_s);
}

TEST(PlaybackState, aFailureIsEqualInKindAndMessage)
{
    const PlaybackState failed = Failed{ { Kind::network, u"a"_s } };
    EXPECT_EQ(failed, PlaybackState(Failed{ { Kind::network, u"a"_s } }));
    EXPECT_NE(failed, PlaybackState(Failed{ { Kind::timeout, u"a"_s } }));
    EXPECT_NE(failed, PlaybackState(Failed{ { Kind::network, u"b"_s } }));
}

TEST(PlaybackState, anAttemptIsEqualInBothNumbers)
{
    const PlaybackState connecting = Connecting{ 2, 5 };
    EXPECT_EQ(connecting, PlaybackState(Connecting{ 2, 5 }));
    EXPECT_NE(connecting, PlaybackState(Connecting{ 3, 5 }));
    EXPECT_NE(connecting, PlaybackState(Connecting{ 2, 1 }));
}

}
