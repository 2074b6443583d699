// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/FailurePlan.h"

#include "RadioWorld.h"

#include <array>
#include <map>
#include <set>

namespace velarin::test {

namespace {

constexpr std::array allKinds{ Kind::timeout, Kind::network, Kind::offline, Kind::notFound, Kind::unsupported,
    Kind::unknown };

// From which failure on a kind sends the radio to the second address.
const std::map<Kind, qint64> alternateFrom{ { Kind::notFound, 1 }, { Kind::unsupported, 1 }, { Kind::timeout, 2 } };
// How many quick retries a kind gets.
const std::map<Kind, qint64> quickRetries{ { Kind::timeout, 4 }, { Kind::network, 4 }, { Kind::unknown, 4 },
    { Kind::notFound, 1 }, { Kind::unsupported, 1 } };
const std::array<std::chrono::seconds, 5> quickDelays{ 0s, 1s, 2s, 3s, 5s };
const std::array<std::chrono::seconds, 7> patientWaits{ 15s, 30s, 60s, 120s, 120s, 120s, 120s };
const std::set<Kind> patientKinds{ Kind::timeout, Kind::network, Kind::unknown };

bool goesToAlternate(const FailureFacts& facts)
{
    const auto from = alternateFrom.find(facts.kind);
    return facts.hasAlternateStream && !facts.usingAlternateStream && from != alternateFrom.end() &&
           facts.failures >= from->second;
}

bool goesToNext(const FailureFacts& facts)
{
    const bool alone = facts.queueCount <= 1;
    const bool wentThrough = facts.skipsInARow + 1 >= facts.queueCount;
    return facts.autoSkipUnreachable && !alone && !wentThrough && !facts.hasAudioSinceConnect;
}

// The rules again, told as tables.
FailurePlan expectedPlan(const FailureFacts& facts)
{
    if (facts.kind == Kind::offline)
        return WaitForNetwork{ facts.autoReconnect };
    if (goesToAlternate(facts))
        return SwitchToAlternate{};
    if (goesToNext(facts))
        return SkipToNext{};
    if (!facts.autoReconnect)
        return StopForGood{};
    if (facts.failures <= quickRetries.at(facts.kind))
        return RetrySoon{ facts.failures + 1, 5, quickDelays.at(static_cast<std::size_t>(facts.failures)) };
    if (patientKinds.contains(facts.kind))
        return RetryPatiently{ patientWaits.at(static_cast<std::size_t>(facts.patientRetries)) };
    return StopForGood{};
}

FailureFacts factsOf(Kind kind, qint64 failures)
{
    FailureFacts facts;
    facts.kind = kind;
    facts.failures = failures;
    return facts;
}

}

TEST(FailurePlan, followsTheRulesForEveryInputThatMatters)
{
    std::set<std::size_t> waysOut;
    for (const Kind kind : allKinds)
        for (qint64 failures = 1; failures <= 6; ++failures)
            for (qint64 patientRetries = 0; patientRetries <= 6; ++patientRetries)
                for (qint64 queueCount = 0; queueCount <= 3; ++queueCount)
                    for (qint64 skips = 0; skips <= 3; ++skips)
                        for (unsigned flags = 0; flags < 32; ++flags) {
                            FailureFacts facts{ kind, failures, patientRetries, (flags & 1) != 0, (flags & 2) != 0,
                                (flags & 4) != 0, (flags & 8) != 0, (flags & 16) != 0, queueCount, skips };
                            const FailurePlan plan = planFailure(facts);
                            waysOut.insert(plan.index());
                            ASSERT_EQ(plan, expectedPlan(facts))
                                << toText(kind).toStdString() << " failures " << failures << " patient "
                                << patientRetries << " queue " << queueCount << " skips " << skips << " flags "
                                << flags;
                        }
    EXPECT_EQ(waysOut.size(), 6u);
}

TEST(FailurePlan, offlineWaitsForTheNetworkAndComesBackOnlyIfWanted)
{
    FailureFacts facts = factsOf(Kind::offline, 1);
    EXPECT_EQ(planFailure(facts), FailurePlan(WaitForNetwork{ true }));
    facts.autoReconnect = false;
    EXPECT_EQ(planFailure(facts), FailurePlan(WaitForNetwork{ false }));
}

TEST(FailurePlan, aSecondAddressComesBeforeTheNextStation)
{
    FailureFacts facts = factsOf(Kind::notFound, 1);
    facts.hasAlternateStream = true;
    facts.autoSkipUnreachable = true;
    facts.queueCount = 3;
    EXPECT_EQ(planFailure(facts), FailurePlan(SwitchToAlternate{}));
}

TEST(FailurePlan, theNextStationComesBeforeARetry)
{
    FailureFacts facts = factsOf(Kind::network, 1);
    facts.autoSkipUnreachable = true;
    facts.queueCount = 2;
    EXPECT_EQ(planFailure(facts), FailurePlan(SkipToNext{}));
}

TEST(FailurePlan, networkAndUnknownNeverUseTheSecondAddress)
{
    for (const Kind kind : { Kind::network, Kind::unknown }) {
        for (qint64 failures = 1; failures <= 6; ++failures) {
            FailureFacts facts = factsOf(kind, failures);
            facts.hasAlternateStream = true;
            EXPECT_NE(planFailure(facts), FailurePlan(SwitchToAlternate{}));
        }
    }
}

TEST(FailurePlan, theFifthFailureEndsTheRun)
{
    EXPECT_EQ(planFailure(factsOf(Kind::timeout, 4)), FailurePlan(RetrySoon{ 5, 5, 5s }));
    EXPECT_EQ(planFailure(factsOf(Kind::timeout, 5)), FailurePlan(RetryPatiently{ 15s }));
}

TEST(FailurePlan, aWrongAddressGetsOneRetryAndIsFinal)
{
    EXPECT_EQ(planFailure(factsOf(Kind::notFound, 1)), FailurePlan(RetrySoon{ 2, 5, 1s }));
    EXPECT_EQ(planFailure(factsOf(Kind::notFound, 2)), FailurePlan(StopForGood{}));
    EXPECT_EQ(planFailure(factsOf(Kind::unsupported, 1)), FailurePlan(RetrySoon{ 2, 5, 1s }));
    EXPECT_EQ(planFailure(factsOf(Kind::unsupported, 2)), FailurePlan(StopForGood{}));
}

TEST(FailurePlan, withoutReconnectionEveryKindIsFinalAtOnce)
{
    for (const Kind kind : { Kind::timeout, Kind::network, Kind::notFound, Kind::unsupported, Kind::unknown }) {
        FailureFacts facts = factsOf(kind, 1);
        facts.autoReconnect = false;
        EXPECT_EQ(planFailure(facts), FailurePlan(StopForGood{}));
    }
}

TEST(FailurePlan, givingUpIsPatientOnlyWithWhatCanPass)
{
    for (const Kind kind : allKinds) {
        const FailurePlan expected =
            patientKinds.contains(kind) ? FailurePlan(RetryPatiently{ 15s }) : FailurePlan(StopForGood{});
        EXPECT_EQ(planGiveUp(factsOf(kind, 1)), expected) << toText(kind).toStdString();
    }
}

}
