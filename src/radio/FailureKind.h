// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioPlayer.h"
#include "radio/PlaybackState.h"

namespace velarin {

// Whether the same address may well sound a moment later: it is asked again, at a lower quality.
[[nodiscard]] bool isTransient(PlaybackFailure::Kind kind);

// What a failure is. Without a network every failure is "offline", whatever the error says. Otherwise the first link of
// the chain, from the outermost, that says something clear decides; a chain that repeats itself says nothing more from
// there on. "hint" is what the caller expects from what it saw, and decides where the error is silent or foreign.
[[nodiscard]] PlaybackFailure::Kind classifyFailure(
    const AudioErrorChain& error, PlaybackFailure::Kind hint, bool isOnline);

// For the developer log: "http 404 (Not Found) < closed 0", or "none".
[[nodiscard]] QString describe(const AudioErrorChain& error);

}
