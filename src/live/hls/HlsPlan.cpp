// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/HlsPlan.h"

#include <algorithm>
#include <cmath>

namespace velarin::live {

namespace {

std::chrono::milliseconds milliseconds(double seconds)
{
    return std::chrono::milliseconds(std::llround(seconds * 1000.0));
}

// Queries carry tokens that change with each answer.
bool sameResource(const HlsSegment& segment, const HlsPosition& position)
{
    constexpr auto part = QUrl::RemoveQuery | QUrl::RemoveFragment;
    return segment.range == position.range && segment.url.adjusted(part) == position.url.adjusted(part);
}

// Whether the first variant is the better choice, both being allowed or both being too much.
bool isBetter(const HlsVariant& left, const HlsVariant& right, qint64 limit)
{
    const bool leftFits = limit == 0 || left.bandwidth <= limit;
    const bool rightFits = limit == 0 || right.bandwidth <= limit;
    if (leftFits != rightFits)
        return leftFits;
    if (left.hasVideo != right.hasVideo)
        return !left.hasVideo;
    return leftFits ? left.bandwidth > right.bandwidth : left.bandwidth < right.bandwidth;
}

qsizetype indexAtOffset(const HlsMediaPlaylist& list, double offset)
{
    double from = offset >= 0.0 ? offset : std::max(0.0, list.duration() + offset);
    for (qsizetype index = 0; index < list.segments.size(); ++index) {
        from -= list.segments[index].duration;
        if (from < 0.0)
            return index;
    }
    return list.segments.size() - 1;
}

qsizetype indexNearEdge(const HlsMediaPlaylist& list)
{
    return std::max<qsizetype>(0, list.segments.size() - hlsStartDistance);
}

// Another encoder's segments never join, however well they follow.
std::optional<HlsNext> nextByNumber(const HlsMediaPlaylist& list, qint64 last)
{
    const qint64 front = list.segments.front().sequence;
    const qint64 back = list.segments.back().sequence;
    if (last < back)
        return HlsNext{ std::max<qint64>(0, last + 1 - front), HlsJoint::Broken };
    if (last - back <= hlsVariantLag)
        return std::nullopt;
    return HlsNext{ *firstHlsSegment(list), HlsJoint::Broken };
}

}

std::optional<qsizetype> chooseHlsVariant(
    const QList<HlsVariant>& variants, qint64 peakBitRate, const QSet<qsizetype>& failed)
{
    std::optional<qsizetype> best;
    for (qsizetype index = 0; index < variants.size(); ++index) {
        if (!failed.contains(index) && (!best || isBetter(variants[index], variants[*best], peakBitRate)))
            best = index;
    }
    return best;
}

std::optional<qsizetype> firstHlsSegment(const HlsMediaPlaylist& list)
{
    if (list.segments.isEmpty())
        return std::nullopt;
    if (list.ended)
        return list.startOffset ? indexAtOffset(list, *list.startOffset) : 0;
    const qsizetype nearEdge = indexNearEdge(list);
    // A live list may ask for more distance to its edge, not for less than the reserve needs.
    return list.startOffset ? std::min(nearEdge, indexAtOffset(list, *list.startOffset)) : nearEdge;
}

HlsPosition positionOf(const HlsSegment& segment)
{
    return { segment.sequence, segment.url, segment.range };
}

HlsPosition carriedOver(const HlsPosition& last, const HlsMediaPlaylist& list)
{
    const bool isKnown = std::any_of(list.segments.begin(), list.segments.end(),
        [&last](const HlsSegment& segment) { return sameResource(segment, last); });
    return isKnown ? last : HlsPosition{ last.sequence, {}, {} };
}

std::optional<HlsNext> nextHlsSegment(const HlsMediaPlaylist& list, const HlsPosition& last)
{
    const auto& segments = list.segments;
    if (segments.isEmpty())
        return std::nullopt;
    if (last.url.isEmpty())
        return nextByNumber(list, last.sequence);
    const auto same = std::find_if(
        segments.rbegin(), segments.rend(), [&last](const HlsSegment& segment) { return sameResource(segment, last); });
    if (same != segments.rend()) {
        const qsizetype following = std::distance(segments.begin(), same.base());
        return following < segments.size() ? std::optional(HlsNext{ following, HlsJoint::Continuous }) : std::nullopt;
    }
    const qint64 first = segments.front().sequence;
    // The window has moved past the last one: by exactly one segment, which is the next, or by more, which are lost.
    if (first == last.sequence + 1)
        return HlsNext{ 0, HlsJoint::Continuous };
    if (first > last.sequence)
        return HlsNext{ 0, HlsJoint::Broken };
    // The last one's number is taken by another address, or is yet to come: the numbering began anew.
    return HlsNext{ *firstHlsSegment(list), HlsJoint::Broken };
}

std::chrono::milliseconds hlsReloadDelay(double targetDuration, int standstills, double reserve)
{
    constexpr double shortest = 0.5;
    constexpr int mostUrgent = 12;
    if (standstills == 0)
        return milliseconds(std::max(shortest, targetDuration));
    const bool isUrgent = reserve < targetDuration && standstills <= mostUrgent;
    const double share = isUrgent ? 0.5 : std::min(1.0, 0.5 + 0.25 * std::min(standstills - 1, 2));
    return milliseconds(std::max(shortest, targetDuration * share));
}

HlsListPlan planHlsListFailure(const HlsListFailure& failure)
{
    using namespace std::chrono_literals;
    constexpr int quickAsks = 4;
    constexpr int asksOfOneList = 2;
    const int asks = failure.failures;
    const auto wait = asks == 1 ? 0ms : asks <= quickAsks ? 500ms : 1000ms;
    // Where neither is known to be right, they take turns.
    const HlsListStep inTurn = asks % 2 == 0 ? HlsListStep::AskAgain : HlsListStep::AskHome;
    if (failure.wasHome)
        return { inTurn, std::max<std::chrono::milliseconds>(wait, 500ms) };
    const int chances = failure.isRefused ? 0 : asksOfOneList;
    if (asks <= chances)
        return { HlsListStep::AskAgain, wait };
    if (asks == chances + 1)
        return { HlsListStep::AskHome, wait };
    if (failure.hasOtherVariant)
        return { HlsListStep::LeaveVariant, 0ms };
    return { inTurn, wait };
}

std::optional<std::chrono::milliseconds> hlsSegmentRetry(bool isRefused, int tries, double reserve)
{
    using namespace std::chrono_literals;
    constexpr double spare = 4.0;
    constexpr int quickTries = 3;
    if (isRefused)
        return tries == 1 && reserve >= spare ? std::optional<std::chrono::milliseconds>(500ms) : std::nullopt;
    return tries == 1 ? 100ms : tries <= quickTries ? 500ms : 1000ms;
}

bool isHlsSegmentWorthWaiting(const HlsSlowness& slowness)
{
    constexpr double longestSilence = 1.5;
    if (slowness.received == 0 || slowness.silentFor > longestSilence || slowness.elapsed <= 0.0)
        return false;
    if (slowness.reserveNow >= slowness.reserveBefore)
        return true;
    if (!slowness.length)
        return false;
    const double pace = static_cast<double>(slowness.received) / slowness.elapsed;
    const double left = static_cast<double>(std::max<qint64>(0, *slowness.length - slowness.received)) / pace;
    return left <= slowness.reserveNow;
}

std::chrono::milliseconds hlsSegmentDeadline(double targetDuration, double reserve)
{
    constexpr double shortest = 2.0;
    return milliseconds(std::clamp(reserve / 2.0, shortest, std::max(shortest, 3.0 * targetDuration)));
}

}
