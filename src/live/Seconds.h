// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>

namespace velarin::live {

// Sound is counted in fractions of a second; time stays in the clock's nanoseconds.
using Seconds = std::chrono::duration<double>;

[[nodiscard]] constexpr std::chrono::nanoseconds toClock(Seconds seconds)
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(seconds);
}

}
