// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/FrameCounter.h"

#include <algorithm>

namespace velarin::live {
namespace {

// The marker and the first metadata block, which is always STREAMINFO (RFC 9639, 8.2).
constexpr QByteArrayView flacMarker("fLaC");
constexpr qsizetype flacRateOffset = 4 + 4 + 10;

// Where the next frame may begin; all of the bytes if nowhere.
qsizetype nextMark(QByteArrayView bytes, QByteArrayView marks)
{
    const auto next = std::find_first_of(bytes.begin() + 1, bytes.end(), marks.begin(), marks.end());
    return next - bytes.begin();
}

int flacStreamRate(QByteArrayView stream)
{
    const auto byte = [stream](qsizetype at) { return static_cast<unsigned char>(stream[at]); };
    return byte(flacRateOffset) << 12 | byte(flacRateOffset + 1) << 4 | byte(flacRateOffset + 2) >> 4;
}

}

double FrameCounter::count(QByteArrayView bytes)
{
    m_pending += bytes;
    double seconds = 0.0;
    qsizetype done = 0;
    while (done < m_pending.size()) {
        const Step taken = step(QByteArrayView(m_pending).sliced(done));
        if (taken.bytes == 0)
            break;
        seconds += taken.seconds;
        done += taken.bytes;
        m_position += taken.bytes;
    }
    m_pending.remove(0, done);
    return seconds;
}

void FrameCounter::markBoundary(qsizetype offset)
{
    m_lastBoundary = m_position + offset;
    if (!m_firstBoundary)
        m_firstBoundary = m_lastBoundary;
}

SizedFrameCounter::SizedFrameCounter(FrameHeaderReader reader)
    : m_reader(reader)
{
}

FrameCounter::Step SizedFrameCounter::step(QByteArrayView pending)
{
    const std::optional<FrameHeader> header = m_reader(pending);
    if (header && m_kind == header->kind)
        return takeFrame(*header, pending);
    if (!header && m_kind && pending.size() < longestFrameHeader)
        return {};
    m_kind.reset();
    const std::optional<bool> begins = framesBeginHere(pending, m_reader);
    if (!begins)
        return {};
    if (!*begins)
        return { nextMark(pending, "\xff"), 0.0 };
    m_kind = header->kind;
    return takeFrame(*header, pending);
}

FrameCounter::Step SizedFrameCounter::takeFrame(const FrameHeader& header, QByteArrayView pending)
{
    markBoundary(0);
    if (pending.size() < header.size)
        return {};
    markBoundary(header.size);
    return { header.size, header.seconds() };
}

FrameCounter::Step FlacFrameCounter::step(QByteArrayView pending)
{
    if (pending.size() < flacRateOffset + 3)
        return {};
    if (pending.startsWith(flacMarker)) {
        m_streamRate = std::max(1, flacStreamRate(pending));
        return { flacMarker.size(), 0.0 };
    }
    std::optional<FrameHeader> header = flacFrameHeader(pending);
    if (!header)
        return { nextMark(pending, "\xff"
                                   "f"),
            0.0 };
    if (header->sampleRate == 0)
        header->sampleRate = m_streamRate;
    markBoundary(0);
    return { 1, std::exchange(m_running, header->seconds()) };
}

RateCounter::RateCounter(qint64 bitRate)
    : m_secondsPerByte(8.0 / static_cast<double>(bitRate))
{
}

FrameCounter::Step RateCounter::step(QByteArrayView pending)
{
    return { pending.size(), static_cast<double>(pending.size()) * m_secondsPerByte };
}

}
