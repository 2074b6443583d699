// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/FrameHeaders.h"

#include <array>

namespace velarin::live {
namespace {

quint32 byteAt(QByteArrayView bytes, qsizetype index)
{
    return static_cast<unsigned char>(bytes[index]);
}

// Kilobits per second by index, for MPEG-1 layers I, II, III, then for MPEG-2 layer I, and layers II and III.
constexpr std::array<std::array<int, 15>, 5> mpegBitRates{ {
    { 0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448 },
    { 0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384 },
    { 0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320 },
    { 0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256 },
    { 0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160 },
} };
constexpr std::array<int, 3> mpegSampleRates{ 44100, 48000, 32000 };
constexpr std::array<int, 13> adtsSampleRates{ 96000, 88200, 64000, 48000, 44100, 32000, 24000, 22050, 16000, 12000,
    11025, 8000, 7350 };
constexpr std::array<int, 12> flacSampleRates{ 0, 88200, 176400, 192000, 8000, 16000, 22050, 24000, 32000, 44100, 48000,
    96000 };

// The fields of the four bytes that every MPEG frame begins with.
struct MpegFields
{
    quint32 version; // 0: 2.5, 2: MPEG-2, 3: MPEG-1
    quint32 layer;   // 1: III, 2: II, 3: I
    quint32 bitRate;
    quint32 sampleRate;
    quint32 padding;
    quint32 emphasis;
};

MpegFields mpegFields(QByteArrayView bytes)
{
    const quint32 second = byteAt(bytes, 1);
    const quint32 third = byteAt(bytes, 2);
    return { (second >> 3) & 3, (second >> 1) & 3, third >> 4, (third >> 2) & 3, (third >> 1) & 1,
        byteAt(bytes, 3) & 3 };
}

bool isMpeg(const MpegFields& fields)
{
    return fields.version != 1 && fields.layer != 0 && fields.bitRate != 0 && fields.bitRate != 15 &&
           fields.sampleRate != 3 && fields.emphasis != 2;
}

int mpegBitRate(const MpegFields& fields)
{
    const size_t table = fields.version == 3 ? 3 - fields.layer : (fields.layer == 3 ? 3 : 4);
    return 1000 * mpegBitRates[table][fields.bitRate];
}

int mpegSampleRate(const MpegFields& fields)
{
    const int divisor = fields.version == 3 ? 1 : (fields.version == 2 ? 2 : 4);
    return mpegSampleRates[fields.sampleRate] / divisor;
}

int mpegSamples(const MpegFields& fields)
{
    if (fields.layer == 3)
        return 384;
    return fields.layer == 1 && fields.version != 3 ? 576 : 1152;
}

qsizetype mpegSize(const MpegFields& fields)
{
    const int slot = fields.layer == 3 ? 4 : 1;
    const int slots = mpegSamples(fields) / 8 / slot * mpegBitRate(fields) / mpegSampleRate(fields);
    return static_cast<qsizetype>(slots + static_cast<int>(fields.padding)) * slot;
}

// Polynomial 0x07, as RFC 9639 has it.
quint32 flacChecksum(QByteArrayView bytes)
{
    quint32 checksum = 0;
    for (qsizetype index = 0; index < bytes.size(); ++index) {
        checksum ^= byteAt(bytes, index);
        for (int bit = 0; bit < 8; ++bit)
            checksum = (checksum & 0x80) ? ((checksum << 1) ^ 0x07) & 0xff : checksum << 1;
    }
    return checksum;
}

// Bytes of the frame's or sample's number, coded like UTF-8; 0 if it is no such code.
qsizetype flacNumberSize(quint32 first)
{
    if (first < 0x80)
        return 1;
    qsizetype size = 0;
    while (size < 8 && (first & (0x80u >> size)))
        ++size;
    return size >= 2 && size <= 7 ? size : 0;
}

qsizetype flacBlockFieldSize(quint32 code)
{
    return code == 6 ? 1 : (code == 7 ? 2 : 0);
}

qsizetype flacRateFieldSize(quint32 code)
{
    return code == 12 ? 1 : (code == 13 || code == 14 ? 2 : 0);
}

quint32 numberAt(QByteArrayView bytes, qsizetype at, qsizetype size)
{
    quint32 number = 0;
    for (qsizetype index = at; index < at + size; ++index)
        number = (number << 8) | byteAt(bytes, index);
    return number;
}

int flacSamples(quint32 code, quint32 field)
{
    if (code == 1)
        return 192;
    if (code <= 5)
        return 576 << (code - 2);
    return code <= 7 ? static_cast<int>(field) + 1 : 256 << (code - 8);
}

int flacSampleRate(quint32 code, quint32 field)
{
    if (code < flacSampleRates.size())
        return flacSampleRates[code];
    const int value = static_cast<int>(field);
    return code == 12 ? value * 1000 : (code == 13 ? value : value * 10);
}

}

std::optional<FrameHeader> mpegFrameHeader(QByteArrayView bytes)
{
    if (bytes.size() < 4 || byteAt(bytes, 0) != 0xff || (byteAt(bytes, 1) & 0xe0) != 0xe0)
        return std::nullopt;
    const MpegFields fields = mpegFields(bytes);
    if (!isMpeg(fields))
        return std::nullopt;
    return FrameHeader{ mpegSize(fields), mpegSamples(fields), mpegSampleRate(fields),
        fields.version << 8 | fields.layer << 4 | fields.sampleRate };
}

std::optional<FrameHeader> adtsFrameHeader(QByteArrayView bytes)
{
    if (bytes.size() < 7 || byteAt(bytes, 0) != 0xff || (byteAt(bytes, 1) & 0xf6) != 0xf0)
        return std::nullopt;
    const quint32 third = byteAt(bytes, 2);
    const quint32 rate = (third >> 2) & 15;
    const quint32 size = ((byteAt(bytes, 3) & 3) << 11) | (byteAt(bytes, 4) << 3) | (byteAt(bytes, 5) >> 5);
    if (rate >= adtsSampleRates.size() || size < 8)
        return std::nullopt;
    const int blocks = static_cast<int>(byteAt(bytes, 6) & 3) + 1;
    const quint32 channels = ((third & 1) << 2) | (byteAt(bytes, 3) >> 6);
    return FrameHeader{ static_cast<qsizetype>(size), 1024 * blocks, adtsSampleRates[rate],
        ((byteAt(bytes, 1) & 8) << 16) | ((third & 0xfc) << 8) | channels };
}

std::optional<FrameHeader> flacFrameHeader(QByteArrayView bytes)
{
    if (bytes.size() < longestFrameHeader || byteAt(bytes, 0) != 0xff || (byteAt(bytes, 1) & 0xfe) != 0xf8)
        return std::nullopt;
    const quint32 block = byteAt(bytes, 2) >> 4;
    const quint32 rate = byteAt(bytes, 2) & 15;
    const quint32 fourth = byteAt(bytes, 3);
    const qsizetype numberSize = flacNumberSize(byteAt(bytes, 4));
    if (block == 0 || rate == 15 || (fourth >> 4) > 10 || (fourth & 1) || numberSize == 0)
        return std::nullopt;
    const qsizetype blockField = 4 + numberSize;
    const qsizetype rateField = blockField + flacBlockFieldSize(block);
    const qsizetype checksum = rateField + flacRateFieldSize(rate);
    if (flacChecksum(bytes.first(checksum)) != byteAt(bytes, checksum))
        return std::nullopt;
    return FrameHeader{ 0, flacSamples(block, numberAt(bytes, blockField, rateField - blockField)),
        flacSampleRate(rate, numberAt(bytes, rateField, checksum - rateField)), (byteAt(bytes, 1) << 8) | rate };
}

std::optional<FrameHeader> loasFrameHeader(QByteArrayView bytes)
{
    if (bytes.size() < 3 || byteAt(bytes, 0) != 0x56 || (byteAt(bytes, 1) & 0xe0) != 0xe0)
        return std::nullopt;
    const quint32 size = ((byteAt(bytes, 1) & 0x1f) << 8) | byteAt(bytes, 2);
    if (size < 2)
        return std::nullopt;
    return FrameHeader{ static_cast<qsizetype>(size) + 3, 1024, 0, 0 };
}

std::optional<bool> framesBeginHere(QByteArrayView bytes, FrameHeaderReader reader)
{
    const std::optional<FrameHeader> first = reader(bytes);
    if (!first)
        return bytes.size() < longestFrameHeader ? std::nullopt : std::optional(false);
    if (bytes.size() < first->size + longestFrameHeader)
        return std::nullopt;
    const std::optional<FrameHeader> second = reader(bytes.sliced(first->size));
    return second && second->kind == first->kind;
}

}
