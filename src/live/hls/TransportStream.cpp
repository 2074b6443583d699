// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/TransportStream.h"

#include "live/hls/Id3Tag.h"

#include <algorithm>
#include <utility>

namespace velarin::live {

namespace {

constexpr qsizetype packetSize = 188;
constexpr char syncByte = 0x47;
constexpr int programTablePid = 0;
constexpr int programTableId = 0;
constexpr int streamTableId = 2;
constexpr qsizetype longestSection = 1024 + 3;
// A tag beyond this holds a picture, and nobody here looks at it.
constexpr qsizetype longestTag = 64 * 1024;
// Of a packetized elementary stream: start code, stream number, length, two bytes of flags, length of what follows.
constexpr qsizetype pesFixedSize = 9;
constexpr qsizetype longestPesHeader = pesFixedSize + 255;

int byteAt(QByteArrayView bytes, qsizetype index)
{
    return static_cast<unsigned char>(bytes[index]);
}

int pidAt(QByteArrayView bytes, qsizetype index)
{
    return ((byteAt(bytes, index) & 0x1f) << 8) | byteAt(bytes, index + 1);
}

qsizetype lengthAt(QByteArrayView bytes, qsizetype index)
{
    return ((byteAt(bytes, index) & 0x0f) << 8) | byteAt(bytes, index + 1);
}

// ISO/IEC 13818-1, table 2-34.
std::optional<SoundFormat> formatOfType(int type)
{
    switch (type) {
    case 0x03:
    case 0x04:
        return SoundFormat::Mpeg;
    case 0x0f:
        return SoundFormat::AacAdts;
    case 0x11:
        return SoundFormat::AacLoas;
    default:
        return std::nullopt;
    }
}

// Metadata in packets of their own: ID3, where anything is.
constexpr int metadataType = 0x15;

// What follows the header of a packet, and its adaptation field; empty where nothing does.
QByteArrayView payloadOf(QByteArrayView packet)
{
    const int control = (byteAt(packet, 3) >> 4) & 3;
    if ((control & 1) == 0)
        return {};
    const qsizetype skipped = (control & 2) != 0 ? 4 + 1 + byteAt(packet, 4) : 4;
    return skipped >= packet.size() ? QByteArrayView() : packet.sliced(skipped);
}

// Bytes of the header of a packetized elementary stream; absent until enough of it is there, 0 where it is none.
std::optional<qsizetype> pesHeaderSize(QByteArrayView bytes)
{
    if (bytes.size() < pesFixedSize)
        return std::nullopt;
    if (!bytes.startsWith(QByteArrayView("\0\0\1", 3)))
        return 0;
    const qsizetype size = pesFixedSize + byteAt(bytes, 8);
    return bytes.size() < size ? std::nullopt : std::optional(size);
}

// The part of a section that tells, without header and checksum; absent if it is another section or not whole.
std::optional<QByteArrayView> sectionBody(QByteArrayView section, int tableId)
{
    constexpr qsizetype head = 8;
    constexpr qsizetype checksum = 4;
    const qsizetype size = lengthAt(section, 1) + 3;
    if (byteAt(section, 0) != tableId || size < head + checksum || size > section.size())
        return std::nullopt;
    return section.sliced(head, size - head - checksum);
}

}

std::vector<TsItem> TransportStream::read(QByteArrayView bytes)
{
    m_rest.append(bytes);
    QByteArrayView left = m_rest;
    while (left.size() >= packetSize) {
        // Damage, or bytes between two packets: the next that may be a start.
        if (left.front() != syncByte) {
            const qsizetype next = left.indexOf(syncByte);
            left = left.sliced(next < 0 ? left.size() : next);
            continue;
        }
        readPacket(left.first(packetSize));
        left = left.sliced(packetSize);
    }
    m_rest = left.toByteArray();
    return std::exchange(m_items, {});
}

std::vector<TsItem> TransportStream::finish()
{
    giveTitle();
    // What came before a header of its own would stand in the wrong place.
    if (m_sound)
        m_sound->packet.clear();
    m_rest.clear();
    return std::exchange(m_items, {});
}

void TransportStream::readPacket(QByteArrayView packet)
{
    const bool starts = (byteAt(packet, 1) & 0x40) != 0;
    const int pid = pidAt(packet, 1);
    const QByteArrayView payload = payloadOf(packet);
    if (payload.isEmpty())
        return;
    if (pid == programTablePid)
        readTable(m_programs, payload, starts);
    else if (m_streams && pid == m_streams->pid)
        readTable(*m_streams, payload, starts);
    else if (m_sound && pid == m_sound->pid)
        readSound(payload, starts);
    else if (m_metadata && pid == m_metadata->pid)
        readMetadata(payload, starts);
}

void TransportStream::readTable(Table& table, QByteArrayView payload, bool starts)
{
    if (starts) {
        const qsizetype pointer = 1 + byteAt(payload, 0);
        if (pointer >= payload.size())
            return;
        payload = payload.sliced(pointer);
        table.section.clear();
    }
    table.section.append(payload.first(std::min(payload.size(), longestSection - table.section.size())));
    if (table.section.size() < 3)
        return;
    const QByteArray section = table.section;
    if (table.pid == programTablePid)
        readPrograms(section);
    else
        readStreams(section);
}

void TransportStream::readPrograms(QByteArrayView section)
{
    const std::optional<QByteArrayView> body = sectionBody(section, programTableId);
    for (qsizetype at = 0; body && at + 4 <= body->size(); at += 4) {
        const bool isNetwork = byteAt(*body, at) == 0 && byteAt(*body, at + 1) == 0;
        if (isNetwork)
            continue;
        if (const int pid = pidAt(*body, at + 2); !m_streams || m_streams->pid != pid)
            m_streams = Table{ pid, {} };
        return;
    }
}

void TransportStream::readStreams(QByteArrayView section)
{
    const std::optional<QByteArrayView> body = sectionBody(section, streamTableId);
    if (!body || body->size() < 4)
        return;
    std::optional<int> sound;
    std::optional<int> metadata;
    for (qsizetype at = 4 + lengthAt(*body, 2); at + 5 <= body->size(); at += 5 + lengthAt(*body, at + 3)) {
        const int type = byteAt(*body, at);
        const std::optional<SoundFormat> format = formatOfType(type);
        if (format && !sound) {
            sound = pidAt(*body, at + 1);
            m_format = *format;
        } else if (type == metadataType && !metadata) {
            metadata = pidAt(*body, at + 1);
        }
    }
    m_isStrange = !sound;
    const auto follow = [](std::optional<Stream>& stream, std::optional<int> pid) {
        if (!pid)
            stream.reset();
        else if (!stream || stream->pid != *pid)
            stream = Stream{ *pid, {}, false };
    };
    follow(m_sound, sound);
    follow(m_metadata, metadata);
}

void TransportStream::readSound(QByteArrayView payload, bool starts)
{
    Stream& stream = *m_sound;
    if (starts) {
        stream.packet.clear();
        stream.isOpen = false;
    } else if (stream.isOpen) {
        give(payload);
        return;
    } else if (stream.packet.isEmpty()) {
        // The stream was joined in the middle of a packet.
        return;
    }
    stream.packet.append(payload);
    const std::optional<qsizetype> header = pesHeaderSize(stream.packet);
    if (!header && stream.packet.size() <= longestPesHeader)
        return;
    stream.isOpen = header.value_or(0) > 0;
    if (stream.isOpen)
        give(QByteArrayView(stream.packet).sliced(*header));
    stream.packet.clear();
}

void TransportStream::readMetadata(QByteArrayView payload, bool starts)
{
    Stream& stream = *m_metadata;
    if (starts) {
        giveTitle();
        stream.isOpen = true;
    }
    if (!stream.isOpen)
        return;
    stream.packet.append(payload);
    const std::optional<qsizetype> header = pesHeaderSize(stream.packet);
    if (!header)
        return;
    const QByteArrayView tag = QByteArrayView(stream.packet).sliced(*header);
    const std::optional<qsizetype> size = id3TagSize(tag);
    const bool isNone = !size && tag.size() >= id3HeaderSize;
    if ((size && tag.size() >= *size) || isNone || tag.size() > longestTag)
        giveTitle();
}

void TransportStream::giveTitle()
{
    if (!m_metadata || !std::exchange(m_metadata->isOpen, false))
        return;
    const QByteArray packet = std::exchange(m_metadata->packet, {});
    const qsizetype header = pesHeaderSize(packet).value_or(packet.size());
    if (const std::optional<QString> title = id3Title(QByteArrayView(packet).sliced(header)))
        m_items.emplace_back(TsTitle{ *title });
}

void TransportStream::give(QByteArrayView sound)
{
    auto* last = m_items.empty() ? nullptr : std::get_if<TsSound>(&m_items.back());
    if (last && last->format == m_format)
        last->bytes.append(sound);
    else if (!sound.isEmpty())
        m_items.emplace_back(TsSound{ m_format, sound.toByteArray() });
}

}
