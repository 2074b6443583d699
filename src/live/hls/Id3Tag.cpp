// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/Id3Tag.h"

#include "live/IcyTitle.h"

#include <QStringDecoder>

#include <algorithm>

namespace velarin::live {

namespace {

constexpr int unsynchronised = 0x80;
constexpr int extendedHeader = 0x40;
constexpr int footer = 0x10;

int byteAt(QByteArrayView bytes, qsizetype index)
{
    return static_cast<unsigned char>(bytes[index]);
}

qsizetype number(QByteArrayView bytes, int bitsEach)
{
    qsizetype result = 0;
    for (const char byte : bytes)
        result = (result << bitsEach) | (static_cast<unsigned char>(byte) & ((1 << bitsEach) - 1));
    return result;
}

// Takes out the zeros that keep a tag from looking like the start of a frame of sound (id3v2.4.0-structure, 6.1).
QByteArray synchronised(QByteArrayView bytes)
{
    QByteArray result;
    result.reserve(bytes.size());
    for (qsizetype at = 0; at < bytes.size(); ++at) {
        result += bytes[at];
        if (byteAt(bytes, at) == 0xff && at + 1 < bytes.size() && bytes[at + 1] == '\0')
            ++at;
    }
    return result;
}

QByteArrayView upToZero(QByteArrayView text)
{
    const qsizetype zero = text.indexOf('\0');
    return zero < 0 ? text : text.first(zero);
}

QString wideText(QByteArrayView bytes, QStringConverter::Encoding encoding)
{
    const QString text = QStringDecoder(encoding)(bytes.first(bytes.size() & ~qsizetype(1)));
    const qsizetype zero = text.indexOf(QChar(u'\0'));
    return zero < 0 ? text : text.first(zero);
}

// The first byte names the encoding (id3v2.4.0-structure, 4).
std::optional<QString> frameText(QByteArrayView frame)
{
    if (frame.isEmpty())
        return std::nullopt;
    const QByteArrayView text = frame.sliced(1);
    switch (byteAt(frame, 0)) {
    case 0:
    case 3:
        return textOfStreamBytes(upToZero(text));
    case 1:
        return wideText(text, QStringConverter::Utf16);
    case 2:
        return wideText(text, QStringConverter::Utf16BE);
    default:
        return std::nullopt;
    }
}

struct FrameShape
{
    qsizetype idSize;
    qsizetype sizeSize;
    qsizetype headerSize;
    int bitsEach;
    QByteArrayView titleId;
};

FrameShape shapeOf(int version)
{
    if (version == 2)
        return { 3, 3, 6, 8, "TT2" };
    return { 4, 4, 10, version == 3 ? 8 : 7, "TIT2" };
}

// Only version 4 marks single frames, in the second byte of their flags.
std::optional<QString> textOfFrame(QByteArrayView header, QByteArrayView content, int version)
{
    const int flags = version == 4 ? byteAt(header, 9) : 0;
    constexpr int compressedOrEncrypted = 0x0c;
    constexpr int frameUnsynchronised = 0x02;
    constexpr int lengthIndicator = 0x01;
    if ((flags & compressedOrEncrypted) != 0)
        return std::nullopt;
    const QByteArrayView text =
        content.sliced((flags & lengthIndicator) != 0 ? std::min<qsizetype>(4, content.size()) : 0);
    return frameText((flags & frameUnsynchronised) != 0 ? QByteArrayView(synchronised(text)) : text);
}

qsizetype extendedHeaderSize(QByteArrayView body, int version)
{
    if (body.size() < 4)
        return body.size();
    // Version 3 does not count the size field itself.
    const qsizetype size = version == 3 ? number(body.first(4), 8) + 4 : number(body.first(4), 7);
    return std::min(size, body.size());
}

std::optional<QString> titleIn(QByteArrayView body, int version)
{
    const FrameShape shape = shapeOf(version);
    while (body.size() > shape.headerSize && body.front() != '\0') {
        const QByteArrayView header = body.first(shape.headerSize);
        const qsizetype size = number(header.sliced(shape.idSize, shape.sizeSize), shape.bitsEach);
        if (size > body.size() - shape.headerSize)
            return std::nullopt;
        const QByteArrayView content = body.sliced(shape.headerSize, size);
        if (header.startsWith(shape.titleId))
            return textOfFrame(header, content, version);
        body = body.sliced(shape.headerSize + size);
    }
    return std::nullopt;
}

}

std::optional<qsizetype> id3TagSize(QByteArrayView bytes)
{
    if (bytes.size() < id3HeaderSize || !bytes.startsWith("ID3"))
        return std::nullopt;
    const bool hasFooter = (byteAt(bytes, 5) & footer) != 0;
    return number(bytes.sliced(6, 4), 7) + id3HeaderSize * (hasFooter ? 2 : 1);
}

std::optional<QString> id3Title(QByteArrayView tag)
{
    const std::optional<qsizetype> size = id3TagSize(tag);
    if (!size || *size > tag.size())
        return std::nullopt;
    const int version = byteAt(tag, 3);
    const int flags = byteAt(tag, 5);
    if (version < 2 || version > 4)
        return std::nullopt;
    const QByteArrayView stored = tag.sliced(id3HeaderSize, number(tag.sliced(6, 4), 7));
    // In version 4 the flag of the whole tag only says that its frames are marked.
    const bool whole = version < 4 && (flags & unsynchronised) != 0;
    const QByteArray undone = whole ? synchronised(stored) : QByteArray();
    const QByteArrayView body = whole ? QByteArrayView(undone) : stored;
    const bool extended = version > 2 && (flags & extendedHeader) != 0;
    return titleIn(body.sliced(extended ? extendedHeaderSize(body, version) : 0), version);
}

}
