// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/hls/HlsPlaylist.h"

#include <QSet>

#include <chrono>
#include <optional>

namespace velarin::live {

// The decisions of the HLS client, as pure functions: which variant, where to begin, what comes next, when to ask
// again.

// The segments between the beginning and the live edge at the start. The standard asks for three target durations at
// least (RFC 8216, section 6.3.3); the fourth costs nothing but distance to the edge, which nobody hears, and carries
// the sound over a list that stands still for three segments.
constexpr qsizetype hlsStartDistance = 4;

// The variant to play, as an index: the highest bandwidth at or below `peakBitRate` (bits per second, 0: no limit), the
// lowest where none is; one without pictures before one with them, since their bytes are not heard. Those in `failed`
// are left out; absent if none is left.
[[nodiscard]] std::optional<qsizetype> chooseHlsVariant(
    const QList<HlsVariant>& variants, qint64 peakBitRate, const QSet<qsizetype>& failed);

// Where playing begins, as an index: the list's own wish, else the start of a list that has ended, else near the live
// edge. Absent in an empty list.
[[nodiscard]] std::optional<qsizetype> firstHlsSegment(const HlsMediaPlaylist& list);

// The segment that was taken last.
struct HlsPosition
{
    qint64 sequence{ 0 };
    QUrl url;
    std::optional<HlsByteRange> range;
    bool operator==(const HlsPosition&) const = default;
};
[[nodiscard]] HlsPosition positionOf(const HlsSegment& segment);

// How the next segment is joined to the one before it.
enum class HlsJoint
{
    // It follows.
    Continuous,
    // Something is missing, or the list began anew: what comes is another stretch of sound.
    Broken,
};

struct HlsNext
{
    qsizetype index{ 0 };
    HlsJoint joint{ HlsJoint::Continuous };
    bool operator==(const HlsNext&) const = default;
};

// What follows `last` in the list; absent if nothing new is there yet. Numbers are believed as long as the addresses
// agree with them; where they do not (a restarted packager counts from zero again), the addresses decide.
[[nodiscard]] std::optional<HlsNext> nextHlsSegment(const HlsMediaPlaylist& list, const HlsPosition& last);

// How long after the last answer the list is asked again (section 6.3.4): a target duration after it brought something
// new; half of one after it did not, growing by a quarter each time up to a whole one, and never under half a second.
// `standstills`: how many times in a row it brought nothing new, failed answers among them.
[[nodiscard]] std::chrono::milliseconds hlsReloadDelay(double targetDuration, int standstills);

// How long one segment may take before it is given up for the next: half of the reserve, at least 2 seconds, and no
// longer than three target durations. `reserve` in seconds of sound.
[[nodiscard]] std::chrono::milliseconds hlsSegmentDeadline(double targetDuration, double reserve);

}
