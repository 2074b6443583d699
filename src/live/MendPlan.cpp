// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/MendPlan.h"

#include <algorithm>

namespace velarin::live {

namespace {

constexpr Seconds soundThatEarnsAMend{ 10.0 };
constexpr int quickAsks = 4;
constexpr Seconds patience{ 2.0 };
constexpr std::size_t asksAtOnce = 2;

Seconds pauseAfter(int asked)
{
    if (asked == 0)
        return Seconds(0.0);
    return asked <= quickAsks ? Seconds(0.5) : Seconds(1.0);
}

}

bool earnsMend(Seconds soundGiven)
{
    return soundGiven >= soundThatEarnsAMend;
}

Seconds silenceThreshold(Seconds inHand, Seconds longestGap)
{
    return std::max(std::clamp(inHand / 2.0, Seconds(1.0), Seconds(3.0)), longestGap * 3.0);
}

AskPlan planAsk(const AskFacts& facts)
{
    Seconds wait = pauseAfter(facts.asked) - facts.sinceLastAsk;
    if (!facts.unanswered.empty())
        wait = std::max(wait, patience - facts.unanswered.back());
    return AskPlan{ .wait = std::max(wait, Seconds(0.0)), .replaceYoungest = facts.unanswered.size() >= asksAtOnce };
}

Seconds searchTime(Seconds inHand, Seconds longestSearch)
{
    constexpr Seconds shortest{ 0.25 };
    constexpr Seconds keptForTheBranch{ 0.5 };
    return std::clamp(inHand - keptForTheBranch, shortest, longestSearch);
}

}
