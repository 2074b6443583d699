// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/Seconds.h"

#include <array>
#include <cstdint>
#include <optional>

namespace velarin::live {

// The longest wait between two arrivals of bytes on one connection within the last minute. Constant memory: one maximum
// a second.
class GapMeter
{
public:
    void arrived(std::chrono::nanoseconds now);
    // The connection was not read for a while by our own will: that is no gap of the server's.
    void interrupt() { m_last.reset(); }
    [[nodiscard]] Seconds longest(std::chrono::nanoseconds now) const;

private:
    static constexpr std::size_t seconds = 60;
    struct Second
    {
        std::int64_t number{ -1 };
        Seconds longest{ 0.0 };
    };
    std::array<Second, seconds> m_seconds;
    std::optional<std::chrono::nanoseconds> m_last;
};

}
