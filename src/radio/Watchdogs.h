// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioPlayer.h"
#include "platform/Clock.h"
#include "radio/StreamQuality.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace velarin {

// How long the radio believes a stream that does not sound.
namespace Watchdogs {

using namespace std::chrono_literals;

// The clock of a playing stream is looked at this often, and must have moved by `minimumProgress` seconds: only one
// that has all but stopped counts, a slow one does not.
inline constexpr std::chrono::seconds progressPeriod = 5s;
inline constexpr double minimumProgress = 0.5;
// After the player stopped by itself.
inline constexpr std::chrono::seconds silentPauseLimit = 2s;
// A line that has been steady this long gets a better quality.
inline constexpr std::chrono::seconds qualityRestoreDelay = 600s;
// Logind lets the machine sleep after 5 seconds at the latest.
inline constexpr std::chrono::seconds sleepDelayLimit = 3s;

// What is stored may be out of bounds.
[[nodiscard]] constexpr std::chrono::seconds answerSeconds(qint64 setting)
{
    return std::chrono::seconds(std::clamp<qint64>(setting, 5, 12));
}

// For the first sound and for each dry spell: the user's setting, and the time that it takes to fill the reserve.
[[nodiscard]] inline std::chrono::nanoseconds answerTimeout(qint64 setting, StreamQuality quality)
{
    return answerSeconds(setting) + fromSeconds(quality.preferredForwardBufferDuration());
}

// Whether a stream that claims to play is silent. `moved`: seconds of its clock in a period, not a number if unknown.
[[nodiscard]] inline bool hasStoppedSilently(TimeControl control, double moved)
{
    return control == TimeControl::Paused || !std::isfinite(moved) || moved < minimumProgress;
}

}

}
