// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <algorithm>
#include <array>
#include <chrono>
#include <optional>

namespace velarin {

// How often, and how long apart, a broken stream is asked again. A run of quick attempts comes first; between runs the
// radio waits patiently, longer each time, and without an end.
namespace ReconnectPolicy {

using namespace std::chrono_literals;

// After the first, second, third and fourth failure of a run.
inline constexpr std::array<std::chrono::seconds, 4> retryDelays{ 1s, 2s, 3s, 5s };
// After the first, second and third give-up; the last one for every further one.
inline constexpr std::array<std::chrono::seconds, 4> patientDelays{ 15s, 30s, 60s, 120s };
// Before the second address of a station is asked.
inline constexpr std::chrono::milliseconds alternateDelay = 500ms;
// Before the next station of the list is tried.
inline constexpr std::chrono::milliseconds skipDelay = 400ms;
// After the machine woke, so that the network can come back.
inline constexpr std::chrono::seconds wakeDelay = 2s;
// A live stream that was paused this long is asked anew: what it holds is stale.
inline constexpr std::chrono::seconds resumeLimit = 20s;

// Attempts of one run.
[[nodiscard]] constexpr qint64 maxAttempts(bool autoReconnect)
{
    return autoReconnect ? 5 : 1;
}

// Absent when the run is at its end.
[[nodiscard]] constexpr std::optional<std::chrono::seconds> retryDelay(qint64 failures, bool enabled)
{
    if (!enabled || failures < 1 || failures > static_cast<qint64>(retryDelays.size()))
        return std::nullopt;
    return retryDelays[static_cast<std::size_t>(failures - 1)];
}

// Absent when the user does not want reconnections.
[[nodiscard]] constexpr std::optional<std::chrono::seconds> patientDelay(qint64 afterGiveUp, bool enabled)
{
    if (!enabled)
        return std::nullopt;
    const auto last = static_cast<qint64>(patientDelays.size()) - 1;
    return patientDelays[static_cast<std::size_t>(std::clamp<qint64>(afterGiveUp - 1, 0, last))];
}

}

}
