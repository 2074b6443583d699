// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <chrono>

namespace velarin::live {

// The last bytes of sound that were received (after IcyReader, before the reserve). What was spliced on is appended as
// if there had been one connection; a new branch begins with clear().
class SpliceTail
{
public:
    // Two seconds at 128 kbit/s: long enough to tell most silences by what was before them.
    static constexpr qsizetype capacity = 32 * 1024;

    void append(QByteArrayView bytes);
    void clear() { m_bytes.clear(); }
    [[nodiscard]] const QByteArray& bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

// Finds where a new connection's sound goes on from the old one's: a server sends a new listener a burst of what it
// sent before, so the last bytes received stand somewhere in it.
//
// Feed look() until it no longer says NeedsMore, then take onward(). The bytes decide alone, except for time: a server
// without a burst gives bytes for ever that do not overlap. After longestSearch since the first byte, or earlier if the
// reserve runs out, the owner calls giveUp().
class Splice
{
public:
    enum class Verdict
    {
        NeedsMore,
        // onward() begins with the byte that follows the last one of the tail.
        Overlaps,
        // onward() is everything that was looked at.
        NoOverlap,
    };

    // Bytes looked through at the most.
    static constexpr qsizetype searchLimit = 1024 * 1024;
    static constexpr std::chrono::milliseconds longestSearch{ 1000 };

    explicit Splice(QByteArray tail);

    [[nodiscard]] Verdict look(QByteArrayView bytes);
    // Ends the search: NoOverlap, unless it has ended before.
    void giveUp();
    [[nodiscard]] Verdict verdict() const { return m_verdict; }
    // Once the search has ended.
    [[nodiscard]] QByteArray onward() const;

private:
    void search();
    [[nodiscard]] bool isOverlapEndingAt(qsizetype end);
    [[nodiscard]] qsizetype lengthOfMatchEndingAt(qsizetype end);

    const QByteArray m_tail;
    // Of the new connection, all so far.
    QByteArray m_burst;
    // Where the overlap may end at the earliest, of what has not been looked at.
    qsizetype m_lookedAt{ 0 };
    // Bytes compared; bounded, since a hostile body can make every place look promising.
    qint64 m_work{ 0 };
    qsizetype m_overlapEnd{ 0 };
    Verdict m_verdict{ Verdict::NeedsMore };
};

}
