// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace velarin::test {

// Encoded sound as a station sends it: for ever, the end followed by the beginning.
class StationProgramme
{
public:
    // `bytesPerSecond`: the pace; of a variable rate the mean. `lead`: seconds of it that are "past" when the server
    // starts, so that there is something to send as a burst.
    StationProgramme(QByteArray bytes, double bytesPerSecond, double lead = 20.0);

    // Bytes that have been on air `seconds` after the server started.
    [[nodiscard]] qint64 liveEdge(double seconds) const;
    // What stands from there on, however far that is.
    [[nodiscard]] QByteArray bytesAt(qint64 position, qint64 count) const;
    // Where a listener who wants to start at `position` can: there, but for Ogg at the next page.
    [[nodiscard]] qint64 startNear(qint64 position) const;
    // What such a listener needs before: the header pages of Ogg, nothing else.
    [[nodiscard]] QByteArray headerBefore(qint64 position) const;
    [[nodiscard]] double bytesPerSecond() const { return m_bytesPerSecond; }

private:
    [[nodiscard]] bool isOgg() const { return m_bytes.startsWith("OggS"); }

    QByteArray m_bytes;
    double m_bytesPerSecond;
    double m_lead;
};

}
