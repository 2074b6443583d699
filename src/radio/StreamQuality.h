// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace velarin {

// A rung of the ladder on which a weak line goes down: a higher tier buffers more and asks for less.
struct StreamQuality
{
    static constexpr qint64 lowestTier = 3;

    // 0 to 3; anything above 2 counts as 3.
    qint64 tier{ 0 };

    bool operator==(const StreamQuality&) const = default;

    [[nodiscard]] QString label() const;
    // Bits per second; 0 is no limit.
    [[nodiscard]] qint64 preferredPeakBitRate() const;
    // Seconds; 0 is the player's own choice.
    [[nodiscard]] double preferredForwardBufferDuration() const;
};

}
