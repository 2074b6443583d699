// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/StartPlan.h"

#include <algorithm>
#include <cmath>

namespace velarin::live {

Seconds soundToStart(Seconds forwardBuffer)
{
    if (forwardBuffer <= Seconds(0.0))
        return Seconds(0.3);
    // One second for each dozen that is asked for.
    return std::clamp(Seconds(std::ceil(forwardBuffer.count() / 12.0)), Seconds(1.0), Seconds(3.0));
}

Seconds soundToGoOn(Seconds forwardBuffer)
{
    return std::max(Seconds(1.0), soundToStart(forwardBuffer));
}

Seconds soundToStopReading(Seconds forwardBuffer)
{
    return std::max(Seconds(60.0), forwardBuffer);
}

}
