// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <chrono>
#include <optional>

namespace velarin {

// MPRIS counts in whole microseconds. What is no number is 0, what is beyond a century is a century.
[[nodiscard]] qint64 microsecondsOf(double seconds);
[[nodiscard]] double secondsOf(qint64 microseconds);

// The place in the item as it was last published, running on from there.
struct MprisTime
{
    // Seconds; absent for a live stream.
    std::optional<double> elapsed;
    std::optional<double> duration;
    // 0.0 while it stands still.
    double rate{ 0.0 };
    // On the continuous clock.
    std::chrono::nanoseconds publishedAt{ 0 };

    // Seconds, within the duration if there is one; absent for a live stream.
    [[nodiscard]] std::optional<double> at(std::chrono::nanoseconds now) const;
};

// Whether `published` is another place than the one that a display has run on to, so that it must be told (the signal
// Seeked). Less than a second apart is the imprecision of the two clocks. A display starts a new item at 0.
[[nodiscard]] bool isJump(std::optional<double> shown, std::optional<double> published);

// Where a relative seek goes.
struct SeekPlan
{
    enum class Way
    {
        // The engine knows its place best: it skips from there.
        Skip,
        // No skipping here, but a place can be chosen: the one counted from what is shown.
        Move,
        // Past the end.
        Next,
    };
    Way way{ Way::Skip };
    // Relative for Skip, from the start for Move.
    double seconds{ 0.0 };
    bool operator==(const SeekPlan&) const = default;
};

struct SeekFacts
{
    double offset{ 0.0 };
    // Whether the active engine skips by itself, and whether it can be sent to a place.
    bool canSkip{ false };
    bool canMove{ false };
    std::optional<double> shown;
    std::optional<double> duration;
};

[[nodiscard]] SeekPlan planSeek(const SeekFacts& facts);

// Whether SetPosition may be obeyed: not before the start, and not behind an end that is known.
[[nodiscard]] bool isWithin(double seconds, std::optional<double> duration);

}
