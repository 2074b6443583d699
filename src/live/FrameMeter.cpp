// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/FrameMeter.h"

#include "live/FrameCounter.h"
#include "live/OggPages.h"

namespace velarin::live {
namespace {

// Sound whose frames nobody finds in this many bytes is counted by its rate: it would else never be enough to start.
constexpr qint64 bytesWithoutFrame = 64 * 1024;

std::unique_ptr<FrameCounter> counterFor(SoundFormat format, qint64 bitRate)
{
    switch (format) {
    case SoundFormat::Mpeg:
        return std::make_unique<SizedFrameCounter>(mpegFrameHeader);
    case SoundFormat::AacAdts:
        return std::make_unique<SizedFrameCounter>(adtsFrameHeader);
    case SoundFormat::Ogg:
        return std::make_unique<OggPageCounter>(bitRate);
    case SoundFormat::Flac:
        return std::make_unique<FlacFrameCounter>();
    case SoundFormat::AacLoas:
    case SoundFormat::MpegTs:
    case SoundFormat::Mp4:
    case SoundFormat::Other:
        break;
    }
    return std::make_unique<RateCounter>(bitRate);
}

}

FrameMeter::FrameMeter(SoundFormat format, std::optional<qint64> claimedBitRate)
    : m_bitRate(claimedBitRate.value_or(assumedBitRate))
    , m_counter(counterFor(format, m_bitRate))
{
}

FrameMeter::FrameMeter(FrameMeter&&) noexcept = default;
FrameMeter& FrameMeter::operator=(FrameMeter&&) noexcept = default;
FrameMeter::~FrameMeter() = default;

double FrameMeter::feed(QByteArrayView bytes)
{
    m_position += bytes.size();
    double seconds = m_counter->count(bytes);
    if (!m_countsByRate && !firstBoundary() && m_position > bytesWithoutFrame) {
        m_countsByRate = true;
        m_counter = std::make_unique<RateCounter>(m_bitRate);
        seconds = static_cast<double>(m_position) * 8.0 / static_cast<double>(m_bitRate);
    }
    m_seconds += seconds;
    return seconds;
}

std::optional<qint64> FrameMeter::firstBoundary() const
{
    return m_counter->firstBoundary();
}

std::optional<qint64> FrameMeter::lastBoundary() const
{
    return m_counter->lastBoundary();
}

}
