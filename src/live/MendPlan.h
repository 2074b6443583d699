// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/Seconds.h"

#include <vector>

namespace velarin::live {

// When a source that gave sound asks its address again. Pure functions; StreamSource obeys.

// Whether a connection that has ended, or has fallen silent, is worth mending. One that gave little is not: a server
// that hangs up each time would be asked for ever, and the listener would never be told.
[[nodiscard]] bool earnsMend(Seconds soundGiven);

// How long no byte may come before a connection counts as silent. `inHand` is the sound that was in hand when the last
// byte came: half of it is left then for the new connection. `longestGap` is the longest wait for a byte in the last
// minute, so that a server that sends in gulps is not taken for a dead one.
[[nodiscard]] Seconds silenceThreshold(Seconds inHand, Seconds longestGap);

struct AskFacts
{
    // Asks since the sound broke off.
    int asked{ 0 };
    Seconds sinceLastAsk{ 0.0 };
    // Ages of the asks that have been given no sound yet, the oldest first.
    std::vector<Seconds> unanswered;
};

struct AskPlan
{
    // Nothing is to be done before this has passed; zero: ask now.
    Seconds wait{ 0.0 };
    // The youngest unanswered ask makes room for the new one.
    bool replaceYoungest{ false };
    bool operator==(const AskPlan&) const = default;
};

// At once, then every half second, then every second. An ask that nobody answers gets company after two seconds, and
// the oldest is kept, since a server may take long for its answer; never more than two are under way.
[[nodiscard]] AskPlan planAsk(const AskFacts& facts);

// How long after the search began the overlap with the old connection may still be looked for: the sound in hand pays
// for it.
[[nodiscard]] Seconds searchTime(Seconds inHand, Seconds longestSearch);

}
