// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/Seconds.h"
#include "platform/AudioPlayer.h"

#include <optional>

namespace velarin::live {

// What is told of an item when its sound does not come, or comes no more. Pure functions; LiveSession obeys.

struct FirstFailure
{
    // Told before the failure, where the server answered.
    std::optional<int> httpStatus;
    AudioErrorChain cause;
    bool operator==(const FirstFailure&) const = default;
};

// An item that never sounded. An address that gave sound of late and now answers 4xx is a station whose source is away
// (a streaming server answers so while its encoder restarts): that is told as a closed stream, which is worth waiting
// for, and not as a status.
[[nodiscard]] FirstFailure planFirstFailure(const AudioErrorChain& cause, bool soundedOfLate);

enum class Mending
{
    // The source asks for its sound again.
    Yes,
    // It does not, so nothing will come.
    No,
};

struct OutageFacts
{
    // Why the sound broke off at first; empty: the connection is silent.
    AudioErrorChain cause;
    Mending mending{ Mending::Yes };
    // Since the last sound was heard.
    Seconds dryFor{ 0.0 };
};

enum class Outcome
{
    // Nothing is decided: go on waiting. For a silent connection always, the engine above has a watchdog for that.
    Wait,
    PlayedToEnd,
    FailedToPlayToEnd,
};

// An item that ran dry.
[[nodiscard]] Outcome planOutcome(const OutageFacts& facts);

// How long after the last sound a source that mends is waited for.
constexpr Seconds dryTimeToTheEnd{ 6.0 };

}
