// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/FailurePlan.h"

#include "radio/FailureKind.h"
#include "radio/ReconnectPolicy.h"

#include <optional>

namespace velarin {

namespace {

using Kind = PlaybackFailure::Kind;

// The address itself is wrong: asking it many times does not help.
bool isDeadEnd(Kind kind)
{
    return kind == Kind::notFound || kind == Kind::unsupported;
}

bool shouldUseAlternate(const FailureFacts& facts)
{
    if (facts.usingAlternateStream || !facts.hasAlternateStream)
        return false;
    return isDeadEnd(facts.kind) || (facts.kind == Kind::timeout && facts.failures >= 2);
}

// A station that has sounded is worth a retry, and the list is gone through once.
bool shouldSkip(const FailureFacts& facts)
{
    return facts.autoSkipUnreachable && facts.queueCount >= 2 && !facts.hasAudioSinceConnect &&
           facts.skipsInARow < facts.queueCount - 1;
}

std::optional<RetrySoon> quickRetry(const FailureFacts& facts)
{
    if (isDeadEnd(facts.kind) && facts.failures >= 2)
        return std::nullopt;
    const auto delay = ReconnectPolicy::retryDelay(facts.failures, facts.autoReconnect);
    if (!delay)
        return std::nullopt;
    return RetrySoon{ facts.failures + 1, ReconnectPolicy::maxAttempts(facts.autoReconnect), *delay };
}

}

FailurePlan planFailure(const FailureFacts& facts)
{
    if (facts.kind == Kind::offline)
        return WaitForNetwork{ facts.autoReconnect };
    if (shouldUseAlternate(facts))
        return SwitchToAlternate{};
    if (shouldSkip(facts))
        return SkipToNext{};
    if (const auto retry = quickRetry(facts))
        return *retry;
    return planGiveUp(facts);
}

FailurePlan planGiveUp(const FailureFacts& facts)
{
    const auto delay = ReconnectPolicy::patientDelay(facts.patientRetries + 1, facts.autoReconnect);
    if (isTransient(facts.kind) && delay)
        return RetryPatiently{ *delay };
    return StopForGood{};
}

}
