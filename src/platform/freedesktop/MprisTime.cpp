// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/MprisTime.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace velarin {

namespace {

constexpr double microsecondsPerSecond = 1e6;
constexpr double century = 100.0 * 365.25 * 24.0 * 3600.0;
constexpr double smallestJump = 1.0;

}

qint64 microsecondsOf(double seconds)
{
    if (std::isnan(seconds))
        return 0;
    return std::llround(std::clamp(seconds, -century, century) * microsecondsPerSecond);
}

double secondsOf(qint64 microseconds)
{
    return double(microseconds) / microsecondsPerSecond;
}

std::optional<double> MprisTime::at(std::chrono::nanoseconds now) const
{
    if (!elapsed)
        return std::nullopt;
    const double passed = std::chrono::duration<double>(now - publishedAt).count();
    const double end = duration > 0.0 ? *duration : std::numeric_limits<double>::infinity();
    return std::clamp(*elapsed + passed * rate, 0.0, std::max(end, 0.0));
}

bool isJump(std::optional<double> shown, std::optional<double> published)
{
    return published && std::abs(*published - shown.value_or(0.0)) >= smallestJump;
}

SeekPlan planSeek(const SeekFacts& facts)
{
    if (facts.canSkip || !facts.canMove || !facts.shown)
        return { SeekPlan::Way::Skip, facts.offset };
    const double target = std::max(*facts.shown + facts.offset, 0.0);
    if (facts.duration > 0.0 && target > *facts.duration)
        return { SeekPlan::Way::Next, 0.0 };
    return { SeekPlan::Way::Move, target };
}

bool isWithin(double seconds, std::optional<double> duration)
{
    return seconds >= 0.0 && !(duration > 0.0 && seconds > *duration);
}

}
