// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "radio/PlaybackState.h"

#include <chrono>
#include <variant>

namespace velarin {

// All that counts when a stream has failed; the failure itself is already in "failures".
struct FailureFacts
{
    PlaybackFailure::Kind kind{ PlaybackFailure::Kind::unknown };
    // Failed attempts of the present run, from 1.
    qint64 failures{ 1 };
    // Give-ups since the radio last sounded.
    qint64 patientRetries{ 0 };
    bool autoReconnect{ true };
    bool autoSkipUnreachable{ false };
    // The station has a second address.
    bool hasAlternateStream{ false };
    bool usingAlternateStream{ false };
    bool hasAudioSinceConnect{ false };
    qint64 queueCount{ 0 };
    // Automatic skips since the radio last sounded.
    qint64 skipsInARow{ 0 };
    bool operator==(const FailureFacts&) const = default;
};

// The six ways out. Nothing is retried without a network: its return brings the radio back.
struct WaitForNetwork
{
    bool resumeWhenOnline{ false };
    bool operator==(const WaitForNetwork&) const = default;
};
struct SwitchToAlternate
{
    bool operator==(const SwitchToAlternate&) const = default;
};
struct SkipToNext
{
    bool operator==(const SkipToNext&) const = default;
};
struct RetrySoon
{
    qint64 attempt{ 0 };
    qint64 maxAttempts{ 0 };
    std::chrono::seconds delay{ 0 };
    bool operator==(const RetrySoon&) const = default;
};
// The run has ended; another one starts after the delay.
struct RetryPatiently
{
    std::chrono::seconds delay{ 0 };
    bool operator==(const RetryPatiently&) const = default;
};
struct StopForGood
{
    bool operator==(const StopForGood&) const = default;
};

using FailurePlan = std::variant<WaitForNetwork, SwitchToAlternate, SkipToNext, RetrySoon, RetryPatiently, StopForGood>;

// A station uses its second address before it counts as a loss, and a list of stations moves on before one of them is
// hammered.
[[nodiscard]] FailurePlan planFailure(const FailureFacts& facts);
// The end of a run: one of the last two ways out.
[[nodiscard]] FailurePlan planGiveUp(const FailureFacts& facts);

}
