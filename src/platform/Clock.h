// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Task.h"

#include <QDateTime>

#include <algorithm>
#include <chrono>
#include <functional>

namespace velarin {

// Time as the logic sees it. Main thread only.
class Clock
{
public:
    virtual ~Clock() = default;

    // The wall clock, in UTC. It can jump.
    [[nodiscard]] virtual QDateTime now() const = 0;

    // A clock that only runs forward and keeps counting while the machine sleeps (CLOCK_BOOTTIME). Its zero is
    // arbitrary.
    [[nodiscard]] virtual std::chrono::nanoseconds continuous() const = 0;

    // Calls `fire` once, on the main thread, when `delay` has passed on the continuous clock; never from inside this
    // call, not even for a delay of zero. A cancelled task does not fire any more, though its time had come.
    [[nodiscard]] virtual Task after(std::chrono::nanoseconds delay, std::function<void()> fire) = 0;
};

// Seconds as the formats and interfaces have them, to be handed to after(). A file may say any number: what is no
// number counts as zero, and beyond 285 years, where nanoseconds end, nothing is told apart.
[[nodiscard]] constexpr std::chrono::nanoseconds fromSeconds(double seconds)
{
    constexpr double most = 9.0e9;
    if (seconds != seconds)
        return std::chrono::nanoseconds(0);
    seconds = std::clamp(seconds, -most, most);
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::duration<double>(seconds));
}

}
