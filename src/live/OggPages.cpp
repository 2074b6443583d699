// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/OggPages.h"

#include <QtEndian>

#include <algorithm>

namespace velarin::live {
namespace {

constexpr QByteArrayView pageMark("OggS");
constexpr qsizetype pageHeaderSize = 27;
constexpr char firstPageFlag = 2;
// More logical streams at a time than any programme has: the ones before are over.
constexpr size_t streamLimit = 16;
// A page holds at most 255 packets, and no encoder makes pages that last this long.
constexpr double longestPage = 30.0;

template<typename Number>
Number littleEndian(QByteArrayView bytes, qsizetype at)
{
    return qFromLittleEndian<Number>(bytes.data() + at);
}

// What the first packet of a logical stream says of its sound.
struct Sound
{
    int rate{ 0 };
    qint64 bitRate{ 0 };
    // Granules before the first that is heard.
    qint64 skipped{ 0 };
};

Sound soundOf(QByteArrayView packet)
{
    if (packet.startsWith("\x01vorbis") && packet.size() >= 28)
        return { littleEndian<qint32>(packet, 12), littleEndian<qint32>(packet, 20), 0 };
    if (packet.startsWith("OpusHead") && packet.size() >= 12)
        return { 48000, 0, littleEndian<quint16>(packet, 10) };
    if (packet.startsWith("Speex   ") && packet.size() >= 56)
        return { littleEndian<qint32>(packet, 36), littleEndian<qint32>(packet, 52), 0 };
    // A header of nine bytes, "fLaC", then STREAMINFO with its own header of four.
    if (packet.startsWith("\x7f"
                          "FLAC") &&
        packet.size() >= 30)
        return { static_cast<int>(qFromBigEndian<quint32>(packet.data() + 27) >> 12), 0, 0 };
    return {};
}

// Pages of a song begin from 0 or where the listener joins; what is known then is only how many bytes there are.
bool isPlausible(double seconds)
{
    return seconds >= 0.0 && seconds <= longestPage;
}

}

OggPageCounter::OggPageCounter(qint64 assumedBitRate)
    : m_assumedBitRate(assumedBitRate)
{
}

FrameCounter::Step OggPageCounter::step(QByteArrayView pending)
{
    const qsizetype compared = std::min(pending.size(), pageMark.size());
    if (pending.first(compared) != pageMark.first(compared)) {
        const qsizetype next = pending.indexOf('O', 1);
        return { next < 0 ? pending.size() : next, 0.0 };
    }
    if (pending.size() < pageHeaderSize)
        return {};
    markBoundary(0);
    const std::optional<Page> page = readPage(pending);
    if (!page)
        return {};
    markBoundary(page->size);
    return { page->size, secondsOf(*page) };
}

std::optional<OggPageCounter::Page> OggPageCounter::readPage(QByteArrayView pending)
{
    const qsizetype segments = static_cast<unsigned char>(pending[26]);
    if (pending.size() < pageHeaderSize + segments)
        return std::nullopt;
    qsizetype contentSize = 0;
    for (const char lacing : pending.sliced(pageHeaderSize, segments))
        contentSize += static_cast<unsigned char>(lacing);
    Page page;
    page.size = pageHeaderSize + segments + contentSize;
    if (pending.size() < page.size)
        return std::nullopt;
    page.first = pending[5] & firstPageFlag;
    if (const qint64 granule = littleEndian<qint64>(pending, 6); granule >= 0)
        page.granule = granule;
    page.serial = littleEndian<quint32>(pending, 14);
    page.sequence = littleEndian<quint32>(pending, 18);
    page.content = pending.sliced(pageHeaderSize + segments, contentSize);
    return page;
}

void OggPageCounter::beginStream(const Page& page)
{
    if (m_streams.size() >= streamLimit)
        m_streams.clear();
    const Sound sound = soundOf(page.content);
    const qint64 bitRate = sound.bitRate > 0 ? sound.bitRate : m_assumedBitRate;
    m_streams[page.serial] = { std::max(0, sound.rate), bitRate, sound.skipped, page.sequence };
}

double OggPageCounter::secondsOf(const Page& page)
{
    if (page.first)
        beginStream(page);
    const auto found = m_streams.find(page.serial);
    if (page.first || found == m_streams.end() || found->second.rate == 0)
        return 0.0;
    LogicalStream& stream = found->second;
    const bool follows = page.sequence == stream.sequence + 1;
    stream.sequence = page.sequence;
    // A header page, or one in the middle of a long packet.
    if (!page.granule || *page.granule == 0)
        return 0.0;
    const double seconds = static_cast<double>(*page.granule - stream.granule) / stream.rate;
    const double estimate = static_cast<double>(page.size) * 8.0 / static_cast<double>(stream.bitRate);
    stream.granule = *page.granule;
    return follows && isPlausible(seconds) ? seconds : estimate;
}

}
