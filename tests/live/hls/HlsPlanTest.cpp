// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/HlsPlan.h"

#include <gmock/gmock.h>

using namespace velarin::live;
using namespace std::chrono_literals;

namespace {

QUrl address(const QString& name)
{
    return QUrl(QStringLiteral("https://radio.example/") + name);
}

// Segments of 4 seconds from `first` on, under names that count from `name`.
HlsMediaPlaylist list(qint64 first, int count, int name)
{
    HlsMediaPlaylist result;
    result.targetDuration = 4.0;
    for (int i = 0; i < count; ++i) {
        HlsSegment segment;
        segment.url = address(QStringLiteral("seg%1.ts").arg(name + i));
        segment.duration = 4.0;
        segment.sequence = first + i;
        result.segments.append(segment);
    }
    return result;
}

HlsPosition position(qint64 sequence, int name)
{
    return { sequence, address(QStringLiteral("seg%1.ts").arg(name)), std::nullopt };
}

HlsVariant variant(qint64 bandwidth, bool hasVideo = false)
{
    HlsVariant result;
    result.bandwidth = bandwidth;
    result.hasVideo = hasVideo;
    return result;
}

}

TEST(HlsPlanTest, theHighestVariantUnderTheLimitIsPlayed)
{
    const QList<HlsVariant> variants{ variant(48000), variant(320000), variant(96000) };
    EXPECT_EQ(chooseHlsVariant(variants, 0, {}), 1);
    EXPECT_EQ(chooseHlsVariant(variants, 128000, {}), 2);
    EXPECT_EQ(chooseHlsVariant(variants, 96000, {}), 2);
    EXPECT_EQ(chooseHlsVariant(variants, 80000, {}), 0);
}

TEST(HlsPlanTest, theLowestVariantIsPlayedWhereNoneFits)
{
    EXPECT_EQ(chooseHlsVariant({ variant(320000), variant(96000) }, 48000, {}), 1);
}

TEST(HlsPlanTest, aVariantThatFailedIsLeftForTheNextLower)
{
    const QList<HlsVariant> variants{ variant(48000), variant(320000), variant(96000) };
    EXPECT_EQ(chooseHlsVariant(variants, 0, { 1 }), 2);
    EXPECT_EQ(chooseHlsVariant(variants, 0, { 1, 2 }), 0);
    EXPECT_EQ(chooseHlsVariant(variants, 0, { 0, 1, 2 }), std::nullopt);
    EXPECT_EQ(chooseHlsVariant({}, 0, {}), std::nullopt);
}

TEST(HlsPlanTest, soundAloneIsPreferredToPictures)
{
    EXPECT_EQ(chooseHlsVariant({ variant(2000000, true), variant(96000) }, 0, {}), 1);
    EXPECT_EQ(chooseHlsVariant({ variant(64000, true), variant(96000) }, 80000, {}), 0);
}

TEST(HlsPlanTest, ofEqualVariantsTheFirstIsPlayed)
{
    EXPECT_EQ(chooseHlsVariant({ variant(0), variant(0) }, 48000, {}), 0);
}

TEST(HlsPlanTest, aLiveListIsBegunFourSegmentsFromItsEdge)
{
    EXPECT_EQ(firstHlsSegment(list(10, 6, 10)), 2);
    EXPECT_EQ(firstHlsSegment(list(10, 3, 10)), 0);
    EXPECT_EQ(firstHlsSegment(list(10, 0, 10)), std::nullopt);
}

TEST(HlsPlanTest, aListThatHasEndedIsBegunAtItsStart)
{
    auto ended = list(0, 10, 0);
    ended.ended = true;
    EXPECT_EQ(firstHlsSegment(ended), 0);
    ended.startOffset = 9.0;
    EXPECT_EQ(firstHlsSegment(ended), 2);
    ended.startOffset = -4.0;
    EXPECT_EQ(firstHlsSegment(ended), 9);
    ended.startOffset = 1000.0;
    EXPECT_EQ(firstHlsSegment(ended), 9);
}

TEST(HlsPlanTest, aLiveListMayAskForMoreDistanceButNotForLess)
{
    auto live = list(0, 10, 0);
    live.startOffset = -36.0;
    EXPECT_EQ(firstHlsSegment(live), 1);
    live.startOffset = -4.0;
    EXPECT_EQ(firstHlsSegment(live), 6);
}

TEST(HlsPlanTest, theSegmentBehindTheLastOneFollows)
{
    EXPECT_EQ(nextHlsSegment(list(10, 6, 10), position(12, 12)), (HlsNext{ 3, HlsJoint::Continuous }));
}

TEST(HlsPlanTest, atTheEdgeThereIsNothingNewYet)
{
    EXPECT_EQ(nextHlsSegment(list(10, 6, 10), position(15, 15)), std::nullopt);
    EXPECT_EQ(nextHlsSegment(list(10, 0, 10), position(15, 15)), std::nullopt);
}

TEST(HlsPlanTest, aWindowThatMovedByOneSegmentContinues)
{
    EXPECT_EQ(nextHlsSegment(list(10, 6, 10), position(9, 9)), (HlsNext{ 0, HlsJoint::Continuous }));
}

TEST(HlsPlanTest, aWindowThatMovedFurtherHasLostSomething)
{
    EXPECT_EQ(nextHlsSegment(list(10, 6, 10), position(7, 7)), (HlsNext{ 0, HlsJoint::Broken }));
}

TEST(HlsPlanTest, aSequenceThatStartsAnewIsFollowedByTheAddresses)
{
    EXPECT_EQ(nextHlsSegment(list(0, 6, 100), position(5102, 102)), (HlsNext{ 3, HlsJoint::Continuous }));
    // The old number exists in the new counting, and means another segment.
    EXPECT_EQ(nextHlsSegment(list(0, 6, 100), position(4, 102)), (HlsNext{ 3, HlsJoint::Continuous }));
}

TEST(HlsPlanTest, aListOfNothingButStrangersIsBegunNearItsEdge)
{
    EXPECT_EQ(nextHlsSegment(list(0, 6, 200), position(5102, 102)), (HlsNext{ 2, HlsJoint::Broken }));
    EXPECT_EQ(nextHlsSegment(list(0, 6, 200), position(4, 102)), (HlsNext{ 2, HlsJoint::Broken }));
}

TEST(HlsPlanTest, aTokenInTheQueryDoesNotMakeAnotherSegment)
{
    auto live = list(10, 6, 10);
    for (HlsSegment& segment : live.segments)
        segment.url.setQuery(QStringLiteral("token=new"));
    HlsPosition last = position(12, 12);
    last.url.setQuery(QStringLiteral("token=old"));
    EXPECT_EQ(nextHlsSegment(live, last), (HlsNext{ 3, HlsJoint::Continuous }));
}

TEST(HlsPlanTest, rangesOfOneFileAreSegmentsOfTheirOwn)
{
    HlsMediaPlaylist live = list(0, 3, 0);
    for (int i = 0; i < 3; ++i) {
        live.segments[i].url = address(QStringLiteral("all.aac"));
        live.segments[i].range = HlsByteRange{ 100, 100 * i };
    }
    EXPECT_EQ(nextHlsSegment(live, positionOf(live.segments[1])), (HlsNext{ 2, HlsJoint::Continuous }));
}

TEST(HlsPlanTest, aListThatStandsStillIsAskedAtGrowingSteps)
{
    EXPECT_EQ(hlsReloadDelay(4.0, 0, 16.0), 4000ms);
    EXPECT_EQ(hlsReloadDelay(4.0, 1, 16.0), 2000ms);
    EXPECT_EQ(hlsReloadDelay(4.0, 2, 16.0), 3000ms);
    EXPECT_EQ(hlsReloadDelay(4.0, 3, 16.0), 4000ms);
    EXPECT_EQ(hlsReloadDelay(4.0, 1000, 16.0), 4000ms);
    EXPECT_EQ(hlsReloadDelay(0.1, 1, 16.0), 500ms);
}

TEST(HlsPlanTest, aListThatStandsStillIsAskedMoreOftenWhereTheSoundRunsOut)
{
    EXPECT_EQ(hlsReloadDelay(4.0, 0, 0.0), 4000ms);
    EXPECT_EQ(hlsReloadDelay(4.0, 3, 3.9), 2000ms);
    EXPECT_EQ(hlsReloadDelay(4.0, 12, 0.0), 2000ms);
    EXPECT_EQ(hlsReloadDelay(4.0, 13, 0.0), 4000ms);
}

TEST(HlsPlanTest, aSlowSegmentIsGivenUpWhileThereIsSoundLeft)
{
    EXPECT_EQ(hlsSegmentDeadline(4.0, 16.0), 8000ms);
    EXPECT_EQ(hlsSegmentDeadline(4.0, 1.0), 2000ms);
    EXPECT_EQ(hlsSegmentDeadline(4.0, 100.0), 12000ms);
    EXPECT_EQ(hlsSegmentDeadline(0.1, 100.0), 2000ms);
}

TEST(HlsPlanTest, inAnotherVariantTheNumberTells)
{
    const auto other = list(10, 6, 500);
    EXPECT_EQ(carriedOver(position(12, 12), other), (HlsPosition{ 12, {}, {} }));
    EXPECT_EQ(nextHlsSegment(other, { 12, {}, {} }), (HlsNext{ 3, HlsJoint::Broken }));
    EXPECT_EQ(nextHlsSegment(other, { 4, {}, {} }), (HlsNext{ 0, HlsJoint::Broken }));
}

TEST(HlsPlanTest, aVariantThatIsALittleBehindIsWaitedFor)
{
    const auto other = list(10, 6, 500);
    EXPECT_EQ(nextHlsSegment(other, { 15, {}, {} }), std::nullopt);
    EXPECT_EQ(nextHlsSegment(other, { 18, {}, {} }), std::nullopt);
    // So far behind that it counts in its own way.
    EXPECT_EQ(nextHlsSegment(other, { 19, {}, {} }), (HlsNext{ 2, HlsJoint::Broken }));
}

TEST(HlsPlanTest, anAddressThatTheNewListHasTooGoesOnCounting)
{
    auto renewed = list(10, 6, 10);
    for (HlsSegment& segment : renewed.segments)
        segment.url.setQuery(QStringLiteral("token=new"));
    EXPECT_EQ(carriedOver(position(12, 12), renewed), position(12, 12));
}

namespace {

struct ListFailureCase
{
    HlsListFailure failure;
    HlsListPlan plan;
};

class HlsListFailureTest : public testing::TestWithParam<ListFailureCase>
{
};

constexpr auto again = HlsListStep::AskAgain;
constexpr auto home = HlsListStep::AskHome;
constexpr auto leave = HlsListStep::LeaveVariant;

}

TEST_P(HlsListFailureTest, hasOneWayOn)
{
    EXPECT_EQ(planHlsListFailure(GetParam().failure), GetParam().plan);
}

INSTANTIATE_TEST_SUITE_P(Each, HlsListFailureTest,
    testing::Values(ListFailureCase{ { .isRefused = true, .failures = 1 }, { home, 0ms } },
        ListFailureCase{ { .isRefused = true, .hasOtherVariant = true, .failures = 2 }, { leave, 0ms } },
        ListFailureCase{ { .isRefused = true, .failures = 2 }, { again, 500ms } },
        ListFailureCase{ { .isRefused = true, .failures = 3 }, { home, 500ms } },
        ListFailureCase{ { .failures = 1 }, { again, 0ms } }, ListFailureCase{ { .failures = 2 }, { again, 500ms } },
        ListFailureCase{ { .failures = 3 }, { home, 500ms } },
        ListFailureCase{ { .hasOtherVariant = true, .failures = 4 }, { leave, 0ms } },
        ListFailureCase{ { .failures = 5 }, { home, 1000ms } }, ListFailureCase{ { .failures = 6 }, { again, 1000ms } },
        ListFailureCase{ { .wasHome = true, .failures = 1 }, { home, 500ms } },
        ListFailureCase{ { .isRefused = true, .wasHome = true, .failures = 2 }, { again, 500ms } },
        ListFailureCase{ { .wasHome = true, .hasOtherVariant = true, .failures = 9 }, { home, 1000ms } }));

TEST(HlsPlanTest, aRefusedSegmentGetsOneMoreChanceIfTheReserveCanPay)
{
    EXPECT_EQ(hlsSegmentRetry(true, 1, 8.0), 500ms);
    EXPECT_EQ(hlsSegmentRetry(true, 2, 8.0), std::nullopt);
    EXPECT_EQ(hlsSegmentRetry(true, 1, 1.0), std::nullopt);
}

TEST(HlsPlanTest, aSegmentThatBreaksOffIsAskedForUntilItsTimeIsOver)
{
    EXPECT_EQ(hlsSegmentRetry(false, 1, 0.0), 100ms);
    EXPECT_EQ(hlsSegmentRetry(false, 3, 0.0), 500ms);
    EXPECT_EQ(hlsSegmentRetry(false, 30, 0.0), 1000ms);
}

TEST(HlsPlanTest, aSlowSegmentIsWaitedForWhileItPaysForItself)
{
    const HlsSlowness asFastAsHeard{ .elapsed = 2.0,
        .silentFor = 0.1,
        .received = 9000,
        .length = std::nullopt,
        .reserveBefore = 4.0,
        .reserveNow = 4.0 };
    EXPECT_TRUE(isHlsSegmentWorthWaiting(asFastAsHeard));
    auto nothing = asFastAsHeard;
    nothing.received = 0;
    EXPECT_FALSE(isHlsSegmentWorthWaiting(nothing));
    auto silent = asFastAsHeard;
    silent.silentFor = 1.6;
    EXPECT_FALSE(isHlsSegmentWorthWaiting(silent));
    auto losing = asFastAsHeard;
    losing.reserveNow = 2.0;
    EXPECT_FALSE(isHlsSegmentWorthWaiting(losing));
    auto nearlyThere = losing;
    nearlyThere.length = 18'000;
    EXPECT_TRUE(isHlsSegmentWorthWaiting(nearlyThere));
    auto farAway = losing;
    farAway.length = 18'001;
    EXPECT_FALSE(isHlsSegmentWorthWaiting(farAway));
}
