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

// The segment that was taken last. Without an address: in another variant, where only its number tells.
struct HlsPosition
{
    qint64 sequence{ 0 };
    QUrl url;
    std::optional<HlsByteRange> range;
    bool operator==(const HlsPosition&) const = default;
};
[[nodiscard]] HlsPosition positionOf(const HlsSegment& segment);

// The same place in a list that came in place of the former one: of another variant, or under an address with another
// token. The segment's own address goes on counting where the new list has it too.
[[nodiscard]] HlsPosition carriedOver(const HlsPosition& last, const HlsMediaPlaylist& list);

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
// With less than a target duration of sound in `reserve` (seconds) it stays at the half, which is all that the standard
// allows, for some time. `standstills`: how many times in a row it brought nothing new, failed answers among them.
[[nodiscard]] std::chrono::milliseconds hlsReloadDelay(double targetDuration, int standstills, double reserve);

// How far the numbers of two variants may lie apart, so that one of them is only late.
constexpr qint64 hlsVariantLag = 3;

// What is done about a list that did not come, or was none.
enum class HlsListStep
{
    // The same list again.
    AskAgain,
    // The station's first address, which may name another list by now.
    AskHome,
    // Another variant.
    LeaveVariant,
};
struct HlsListFailure
{
    // The server answered, and will hardly answer otherwise soon: 4xx, or no list.
    bool isRefused{ false };
    // It was the first address that failed.
    bool wasHome{ false };
    bool hasOtherVariant{ false };
    // Since the last list that came, this one included.
    int failures{ 1 };
};
struct HlsListPlan
{
    HlsListStep step{ HlsListStep::AskAgain };
    std::chrono::milliseconds wait{ 0 };
    bool operator==(const HlsListPlan&) const = default;
};
// A list that is refused is looked for under the first address, since addresses of lists expire; refused again, it is
// left for another. One that breaks off is asked for again twice before that. At once, then each half second, then each
// second.
[[nodiscard]] HlsListPlan planHlsListFailure(const HlsListFailure& failure);

// How long to wait before a segment that did not come is asked for once more; absent: not again. One that is refused
// gets one more chance, as its list may be faster than its server, if `reserve` (seconds of sound) can pay for it.
[[nodiscard]] std::optional<std::chrono::milliseconds> hlsSegmentRetry(bool isRefused, int tries, double reserve);

// A segment whose time is over.
struct HlsSlowness
{
    // Seconds since it was asked for, and since its last byte.
    double elapsed{ 0.0 };
    double silentFor{ 0.0 };
    qint64 received{ 0 };
    // As the server claims.
    std::optional<qint64> length;
    // Seconds of sound when it was asked for, and now.
    double reserveBefore{ 0.0 };
    double reserveNow{ 0.0 };
};
// Whether it is given more time: it brings sound as fast as it is heard, or will be there before the reserve is used
// up.
[[nodiscard]] bool isHlsSegmentWorthWaiting(const HlsSlowness& slowness);

// How long one segment may take before it is given up for the next: half of the reserve, at least 2 seconds, and no
// longer than three target durations. `reserve` in seconds of sound.
[[nodiscard]] std::chrono::milliseconds hlsSegmentDeadline(double targetDuration, double reserve);

}
