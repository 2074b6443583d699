// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/Connection.h"

#include <QByteArrayView>

namespace velarin::live {

// Reads the heads of one answer, line by line: interim answers and redirects first, the head of the body last.
class StreamHeadParser
{
public:
    enum class State
    {
        // Within a head, or before one.
        Reading,
        // The empty line after an interim answer or a redirect: another head follows.
        Passed,
        // The empty line after the head that counts.
        Complete,
        // Too long, too many lines, or no head at all. Final.
        Malformed,
    };

    // Of all heads of the answer together.
    static constexpr qsizetype byteLimit = 64 * 1024;
    static constexpr int lineLimit = 512;
    // A larger interval than any server keeps is a number that went wrong: it counts as none.
    static constexpr qint64 longestInterval = 16 * 1024 * 1024;

    // One line with its line end. After Complete and Malformed lines change nothing.
    State readLine(QByteArrayView line);

    [[nodiscard]] State state() const { return m_state; }
    // What the last head said; its `url` is not the parser's business and empty.
    [[nodiscard]] const StreamHead& head() const { return m_head; }

private:
    void readStatusLine(QByteArrayView line);
    void readField(QByteArrayView line);
    void endHead();

    State m_state{ State::Reading };
    StreamHead m_head;
    bool m_inHead{ false };
    bool m_redirects{ false };
    bool m_isPacked{ false };
    qsizetype m_bytes{ 0 };
    int m_lines{ 0 };
};

}
