// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/Reserve.h"

#include <algorithm>

namespace velarin::live {

namespace {

// Small pieces are joined, so that a server that sends byte by byte costs no more than its bytes.
constexpr qsizetype chunkSize = 4 * 1024;
constexpr qint64 smallestSlice = 1024;
constexpr qint64 largestSlice = 16 * 1024;

}

void Reserve::startStretch(SoundFormat format, std::optional<qint64> claimedBitRate)
{
    // One that never got a byte leaves no trace.
    if (!m_stretches.empty() && m_stretches.back().meter.position() == 0)
        m_stretches.pop_back();
    m_stretches.push_back(
        Stretch{ .format = format, .meter = FrameMeter(format, claimedBitRate), .place = m_added, .chunks = {} });
}

Seconds Reserve::add(QByteArrayView bytes, std::optional<Seconds> lasting)
{
    Stretch& stretch = m_stretches.back();
    const Seconds counted{ stretch.meter.feed(bytes) };
    const Seconds completed = lasting.value_or(counted);
    if (stretch.chunks.empty() || stretch.chunks.back().bytes.size() + bytes.size() > chunkSize)
        stretch.chunks.emplace_back();
    stretch.chunks.back().bytes.append(bytes);
    stretch.chunks.back().seconds += completed;
    stretch.seconds += completed;
    stretch.bytes += bytes.size();
    m_added += completed;
    return completed;
}

QByteArray Reserve::take()
{
    if (m_stretches.empty() || m_stretches.front().chunks.empty())
        return {};
    Stretch& stretch = m_stretches.front();
    Chunk& chunk = stretch.chunks.front();
    const double bytesPerSecond =
        static_cast<double>(stretch.meter.position()) / std::max(0.1, stretch.meter.seconds());
    const qint64 slice = std::clamp(static_cast<qint64>(bytesPerSecond / 5.0), smallestSlice, largestSlice);
    const qsizetype taken = std::min<qsizetype>(chunk.bytes.size(), slice);
    const Seconds seconds = chunk.seconds * (static_cast<double>(taken) / static_cast<double>(chunk.bytes.size()));

    const QByteArray bytes = chunk.bytes.left(taken);
    chunk.bytes.remove(0, taken);
    chunk.seconds -= seconds;
    stretch.seconds -= seconds;
    stretch.bytes -= taken;
    if (chunk.bytes.isEmpty())
        stretch.chunks.pop_front();
    return bytes;
}

bool Reserve::hasNextStretch() const
{
    return m_stretches.size() > 1 && m_stretches.front().chunks.empty() && m_stretches[1].bytes > 0;
}

void Reserve::emptyStretch()
{
    Stretch& stretch = m_stretches.front();
    stretch.chunks.clear();
    stretch.seconds = Seconds(0.0);
    stretch.bytes = 0;
}

void Reserve::leaveStretch()
{
    m_stretches.pop_front();
}

Seconds Reserve::seconds() const
{
    Seconds sum{ 0.0 };
    for (const Stretch& stretch : m_stretches)
        sum += std::max(stretch.seconds, Seconds(0.0));
    return sum;
}

qint64 Reserve::bytes() const
{
    qint64 sum = 0;
    for (const Stretch& stretch : m_stretches)
        sum += stretch.bytes;
    return sum;
}

}
