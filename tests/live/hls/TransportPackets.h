// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <map>

namespace velarin::live::test {

// Writes transport streams packet by packet, and ID3 tags, for tests.
class TransportPackets
{
public:
    // The two tables: one programme, whose streams are these (kind by number).
    [[nodiscard]] QByteArray tables(const std::map<int, int>& streams);
    // One packet of an elementary stream, cut into packets of transport.
    [[nodiscard]] QByteArray elementary(int pid, const QByteArray& bytes);

private:
    [[nodiscard]] QByteArray packets(int pid, QByteArray payload);

    std::map<int, int> m_counters;
};

// A version 4 tag with one text frame.
[[nodiscard]] QByteArray id3Tag(const QByteArray& frame, const QByteArray& text, char encoding = 3);

}
