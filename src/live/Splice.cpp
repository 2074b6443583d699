// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/Splice.h"

#include <algorithm>
#include <bitset>
#include <cstring>

namespace velarin::live {
namespace {

// A match of encoded sound that long is no accident ...
constexpr qsizetype needleSize = 256;
// ... if it holds that many different bytes. Silence at a constant bit rate does not: frame after frame is the same,
// and most of a frame is filling.
constexpr int valuesOfSound = 32;
// In silence a match has to span some frames, and more than the filling of one.
constexpr qsizetype silenceSize = 1024;
constexpr int valuesOfSilence = 4;
// Each byte is read up to three times: well under a tenth of a second.
constexpr qint64 workLimit = 16 * 1024 * 1024;
constexpr QByteArrayView oggPage("OggS");

int differentBytes(QByteArrayView bytes)
{
    std::bitset<256> seen;
    for (const char byte : bytes)
        seen.set(static_cast<unsigned char>(byte));
    return static_cast<int>(seen.count());
}

// memmem() takes linear time whatever the bytes are, which Qt's search does not.
qsizetype indexOf(QByteArrayView needle, QByteArrayView bytes, qsizetype from)
{
    if (from >= bytes.size())
        return -1;
    const QByteArrayView rest = bytes.sliced(from);
    const void* found =
        memmem(rest.data(), static_cast<size_t>(rest.size()), needle.data(), static_cast<size_t>(needle.size()));
    return found ? static_cast<const char*>(found) - bytes.data() : -1;
}

// Whether bytes that stand in both places can only be the same sound.
bool isTelling(QByteArrayView match)
{
    const int values = differentBytes(match);
    return (match.size() >= needleSize && values >= valuesOfSound) ||
           (match.size() >= silenceSize && values >= valuesOfSilence);
}

}

void SpliceTail::append(QByteArrayView bytes)
{
    m_bytes += bytes.last(std::min(bytes.size(), capacity));
    if (m_bytes.size() > capacity)
        m_bytes.remove(0, m_bytes.size() - capacity);
}

Splice::Splice(QByteArray tail)
    : m_tail(std::move(tail))
{
    if (!isTelling(m_tail))
        m_verdict = Verdict::NoOverlap;
}

Splice::Verdict Splice::look(QByteArrayView bytes)
{
    m_burst += bytes;
    if (m_verdict == Verdict::NeedsMore)
        search();
    return m_verdict;
}

void Splice::giveUp()
{
    if (m_verdict == Verdict::NeedsMore)
        m_verdict = Verdict::NoOverlap;
}

QByteArray Splice::onward() const
{
    return m_burst.sliced(m_overlapEnd);
}

// The first place that will do is taken. Where there are several, the sound between them repeats itself byte for byte:
// that is silence, and to hear some of it twice is better than to miss what follows it.
void Splice::search()
{
    const QByteArrayView searched = QByteArrayView(m_burst).first(std::min(m_burst.size(), searchLimit));
    const QByteArrayView needle = QByteArrayView(m_tail).last(needleSize);
    while (m_verdict == Verdict::NeedsMore) {
        const qsizetype found = indexOf(needle, searched, m_lookedAt);
        if (found < 0)
            break;
        m_lookedAt = found + 1;
        if (isOverlapEndingAt(found + needleSize)) {
            m_overlapEnd = found + needleSize;
            m_verdict = Verdict::Overlaps;
        }
        if (m_work > workLimit)
            giveUp();
    }
    m_lookedAt = std::max(m_lookedAt, searched.size() - needleSize + 1);
    if (searched.size() >= searchLimit)
        giveUp();
}

// All that the burst holds before the place has to be the tail, as far back as the one of them goes that goes back
// less. But for Ogg: there a burst begins with header pages of long ago, so the match may begin with any page.
bool Splice::isOverlapEndingAt(qsizetype end)
{
    const qsizetype length = lengthOfMatchEndingAt(end);
    QByteArrayView match = QByteArrayView(m_burst).sliced(end - length, length);
    if (length < std::min(m_tail.size(), end)) {
        const qsizetype page = indexOf(oggPage, match, 0);
        match = page < 0 ? QByteArrayView() : match.sliced(page);
    }
    return isTelling(match);
}

qsizetype Splice::lengthOfMatchEndingAt(qsizetype end)
{
    const qsizetype longest = std::min(m_tail.size(), end);
    const auto tailEnd = m_tail.crbegin();
    const auto burstEnd = std::make_reverse_iterator(m_burst.cbegin() + end);
    const auto difference = std::mismatch(tailEnd, tailEnd + longest, burstEnd);
    const qsizetype length = difference.first - tailEnd;
    m_work += length;
    return length;
}

}
