// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/TransportPackets.h"

namespace velarin::live::test {

namespace {

constexpr qsizetype packetSize = 188;
constexpr int tablePid = 0x100;

char low(qsizetype value)
{
    return static_cast<char>(value & 0xff);
}

QByteArray section(int id, const QByteArray& body)
{
    constexpr qsizetype afterLength = 5 + 4;
    const qsizetype length = body.size() + afterLength;
    QByteArray bytes{ 1, '\0' }; // the pointer to the section
    bytes += low(id);
    bytes += low(0xb0 | (length >> 8));
    bytes += low(length);
    bytes += QByteArray("\0\1\xc1\0\0", 5);
    return bytes + body + QByteArray(4, '\0');
}

QByteArray synchsafe(qsizetype size)
{
    QByteArray bytes;
    for (int shift = 21; shift >= 0; shift -= 7)
        bytes += static_cast<char>((size >> shift) & 0x7f);
    return bytes;
}

}

QByteArray TransportPackets::packets(int pid, QByteArray payload)
{
    QByteArray result;
    bool starts = true;
    while (!payload.isEmpty()) {
        const qsizetype room = packetSize - 4;
        const bool isShort = payload.size() < room;
        result += 'G';
        result += low((starts ? 0x40 : 0) | (pid >> 8));
        result += low(pid);
        result += low((isShort ? 0x30 : 0x10) | (m_counters[pid]++ & 0xf));
        if (isShort) {
            const qsizetype filling = room - payload.size() - 1;
            result += low(filling);
            if (filling > 0)
                result += QByteArray(1, '\0') + QByteArray(filling - 1, '\xff');
        }
        result += payload.left(room);
        payload.remove(0, room);
        starts = false;
    }
    return result;
}

QByteArray TransportPackets::tables(const std::map<int, int>& streams)
{
    QByteArray programs("\0\1", 2);
    programs += low(0xe0 | (tablePid >> 8));
    programs += low(tablePid);
    QByteArray map("\xe1\1\xf0\0", 4);
    for (const auto& [pid, type] : streams) {
        map += low(type);
        map += low(0xe0 | (pid >> 8));
        map += low(pid);
        map += QByteArray("\xf0\0", 2);
    }
    return packets(0, section(0, programs)) + packets(tablePid, section(2, map));
}

QByteArray TransportPackets::elementary(int pid, const QByteArray& bytes)
{
    const QByteArray head = QByteArray("\0\0\1\xc0\0\0\x80\x80\5", 9) + QByteArray(5, '\x21');
    return packets(pid, head + bytes);
}

QByteArray id3Tag(const QByteArray& frame, const QByteArray& text, char encoding)
{
    const QByteArray content = QByteArray(1, encoding) + text;
    const QByteArray body = frame + synchsafe(content.size()) + QByteArray(2, '\0') + content;
    return "ID3" + QByteArray("\4\0\0", 3) + synchsafe(body.size()) + body;
}

}
