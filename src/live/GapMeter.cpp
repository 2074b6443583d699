// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/GapMeter.h"

#include <algorithm>

namespace velarin::live {

namespace {

std::int64_t secondOf(std::chrono::nanoseconds time)
{
    return std::chrono::duration_cast<std::chrono::seconds>(time).count();
}

}

void GapMeter::arrived(std::chrono::nanoseconds now)
{
    const Seconds gap = m_last ? Seconds(now - *m_last) : Seconds(0.0);
    m_last = now;
    const std::int64_t number = secondOf(now);
    Second& second = m_seconds[static_cast<std::size_t>(number) % seconds];
    if (second.number != number)
        second = Second{ .number = number };
    second.longest = std::max(second.longest, gap);
}

Seconds GapMeter::longest(std::chrono::nanoseconds now) const
{
    const std::int64_t oldest = secondOf(now) - static_cast<std::int64_t>(seconds);
    Seconds longest{ 0.0 };
    for (const Second& second : m_seconds) {
        if (second.number > oldest)
            longest = std::max(longest, second.longest);
    }
    return longest;
}

}
