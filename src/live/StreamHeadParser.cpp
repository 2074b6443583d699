// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/StreamHeadParser.h"

#include <algorithm>

namespace velarin::live {
namespace {

// A rate beyond this is no rate.
constexpr qint64 highestClaimedKilobits = 10'000;
constexpr qint64 largestLength = 1LL << 40;

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

// The number that the text begins with: "128" of "128,128" or "128 kbps". Absent if it begins with none, or with one
// too long to be meant.
std::optional<qint64> leadingNumber(QByteArrayView text)
{
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    const qsizetype digits = end - text.begin();
    if (digits == 0 || digits > 15)
        return std::nullopt;
    return text.first(digits).toLongLong();
}

std::optional<qint64> numberWithin(QByteArrayView text, qint64 largest)
{
    const std::optional<qint64> number = leadingNumber(text);
    return number && *number > 0 && *number <= largest ? number : std::nullopt;
}

QByteArray mediaType(QByteArrayView value)
{
    const qsizetype parameters = value.indexOf(';');
    return value.first(parameters < 0 ? value.size() : parameters).trimmed().toByteArray().toLower();
}

// The three digits after the protocol's name: "HTTP/1.1 200 OK", "ICY 200 OK". Absent if this is no status line.
std::optional<int> statusOf(QByteArrayView line)
{
    if (!line.startsWith("HTTP/") && !line.startsWith("ICY "))
        return std::nullopt;
    const qsizetype blank = line.indexOf(' ');
    const QByteArrayView rest = blank < 0 ? QByteArrayView() : line.sliced(blank).trimmed();
    const std::optional<qint64> number = leadingNumber(rest);
    if (!number || *number < 100 || *number > 999)
        return std::nullopt;
    return static_cast<int>(*number);
}

}

StreamHeadParser::State StreamHeadParser::readLine(QByteArrayView line)
{
    if (m_state == State::Complete || m_state == State::Malformed)
        return m_state;
    m_state = State::Reading;
    m_bytes += line.size();
    ++m_lines;
    const QByteArrayView text = line.trimmed();
    if (m_bytes > byteLimit || m_lines > lineLimit)
        m_state = State::Malformed;
    else if (!m_inHead)
        readStatusLine(text);
    else if (text.isEmpty())
        endHead();
    else
        readField(text);
    return m_state;
}

void StreamHeadParser::readStatusLine(QByteArrayView line)
{
    const std::optional<int> status = statusOf(line);
    if (!status) {
        m_state = State::Malformed;
        return;
    }
    m_head = {};
    m_head.status = *status;
    m_inHead = true;
    m_redirects = false;
    m_isPacked = false;
}

void StreamHeadParser::readField(QByteArrayView line)
{
    const qsizetype colon = line.indexOf(':');
    // Not a field, and no reason to do without the sound.
    if (colon < 0)
        return;
    const QByteArray name = line.first(colon).trimmed().toByteArray().toLower();
    const QByteArrayView value = line.sliced(colon + 1).trimmed();
    if (name == "content-type")
        m_head.contentType = mediaType(value);
    else if (name == "icy-metaint")
        m_head.metadataInterval = numberWithin(value, longestInterval);
    else if (name == "icy-br")
        m_head.claimedBitRate = numberWithin(value, highestClaimedKilobits);
    else if (name == "content-length")
        m_head.length = numberWithin(value, largestLength);
    else if (name == "content-encoding")
        m_isPacked = true;
    else if (name == "location")
        m_redirects = !value.isEmpty();
}

void StreamHeadParser::endHead()
{
    m_inHead = false;
    if (m_head.claimedBitRate)
        m_head.claimedBitRate = *m_head.claimedBitRate * 1000;
    if (m_isPacked)
        m_head.length.reset();
    const bool interim = m_head.status < 200;
    const bool redirect = m_redirects && m_head.status >= 300 && m_head.status < 400;
    m_state = interim || redirect ? State::Passed : State::Complete;
}

}
