// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/Seconds.h"

namespace velarin::live {

// How much sound has to be in hand (received and not yet heard) at the turning points of an item's life. A function of
// the forward buffer that the item asks for: none is full quality, and each lower rung of the ladder asks for more.

// Before the first sound: short at full quality, since a listener who has just chosen a station is waiting for it.
[[nodiscard]] Seconds soundToStart(Seconds forwardBuffer);

// After the sound ran dry: at least a second, so that one hiccup is not followed by the next.
[[nodiscard]] Seconds soundToGoOn(Seconds forwardBuffer);

// Above this the network is not read any more: what is bounded cannot grow with a server that sends too fast.
[[nodiscard]] Seconds soundToStopReading(Seconds forwardBuffer);

// Reading goes on when this much less than that is in hand: the window of the transport opens in one stroke, not once
// for every slice of sound that is heard.
constexpr Seconds soundToReadOn{ 5.0 };

// The same bound for sound that costs many bytes a second.
constexpr long long bytesToStopReading = 32LL * 1024 * 1024;

}
