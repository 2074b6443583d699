// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/BodySniffer.h"

#include "live/BodyText.h"
#include "live/FrameHeaders.h"

#include <algorithm>
#include <array>

namespace velarin::live {
namespace {

struct Mark
{
    qsizetype at;
    QByteArrayView bytes;
    SniffedBody body;
};

SniffedBody sound(SoundFormat format, qsizetype start = 0)
{
    return { BodyKind::Sound, format, start };
}

const SniffedBody needsMore{ BodyKind::NeedsMore, SoundFormat::Other, 0 };
const SniffedBody notSound{ BodyKind::NotSound, SoundFormat::Other, 0 };

template<qsizetype size>
QByteArrayView mark(const char (&text)[size])
{
    return QByteArrayView(text, size - 1);
}

// What names itself in its first bytes.
const std::array marks{
    Mark{ 0, mark("OggS"), sound(SoundFormat::Ogg) },
    Mark{ 0, mark("fLaC"), sound(SoundFormat::Flac) },
    Mark{ 4, mark("ftyp"), sound(SoundFormat::Mp4) },
    Mark{ 4, mark("styp"), sound(SoundFormat::Mp4) },
    Mark{ 4, mark("moov"), sound(SoundFormat::Mp4) },
    Mark{ 4, mark("moof"), sound(SoundFormat::Mp4) },
    // WebP and WAVE are both RIFF.
    Mark{ 8, mark("WEBP"), notSound },
    Mark{ 8, mark("WAVE"), sound(SoundFormat::Other) },
    Mark{ 8, mark("AIF"), sound(SoundFormat::Other) },
    Mark{ 0, mark("\x1a\x45\xdf\xa3"), sound(SoundFormat::Other) }, // Matroska, WebM
    Mark{ 0, mark("\x30\x26\xb2\x75"), sound(SoundFormat::Other) }, // ASF
    Mark{ 0, mark("FLV\x01"), sound(SoundFormat::Other) },
    Mark{ 0, mark("ADIF"), sound(SoundFormat::Other) },
    Mark{ 0, mark("\x0b\x77"), sound(SoundFormat::Other) }, // AC-3
    Mark{ 0, mark("\x89PNG"), notSound },
    Mark{ 0, mark("GIF8"), notSound },
    Mark{ 0, mark("\xff\xd8\xff"), notSound }, // JPEG
    Mark{ 0, mark("\x1f\x8b"), notSound },     // gzip
    Mark{ 0, mark("PK\x03\x04"), notSound },
    Mark{ 0, mark("%PDF"), notSound },
};

std::optional<SniffedBody> byMark(QByteArrayView first)
{
    for (const Mark& mark : marks)
        if (first.size() >= mark.at + mark.bytes.size() && first.sliced(mark.at).startsWith(mark.bytes))
            return mark.body;
    return std::nullopt;
}

bool isTransportStream(QByteArrayView first)
{
    constexpr qsizetype packet = 188;
    return first.size() > 2 * packet && first[0] == 'G' && first[packet] == 'G' && first[2 * packet] == 'G';
}

// Bytes of an ID3v2 tag, with its header and footer (id3v2.4.0-structure, 3.1); 0 without one.
qsizetype tagSize(QByteArrayView first)
{
    if (first.size() < 10 || !first.startsWith("ID3"))
        return 0;
    qsizetype size = 0;
    for (const char byte : first.sliced(6, 4))
        size = (size << 7) | (byte & 0x7f);
    return size + ((first[5] & 0x10) ? 20 : 10);
}

// Two headers of this format are short, so that three in a row are asked for.
bool loasBeginsHere(QByteArrayView bytes)
{
    const std::optional<FrameHeader> header = loasFrameHeader(bytes);
    return header && framesBeginHere(bytes, loasFrameHeader) == true &&
           framesBeginHere(bytes.sliced(header->size), loasFrameHeader) == true;
}

// The first place from `from` on where frames follow one another.
std::optional<SniffedBody> byFrames(QByteArrayView first, qsizetype from)
{
    for (qsizetype at = from; at < first.size(); ++at) {
        const QByteArrayView rest = first.sliced(at);
        const auto mark = static_cast<unsigned char>(rest.front());
        if (mark == 0x56 && loasBeginsHere(rest))
            return sound(SoundFormat::AacLoas, at);
        if (mark != 0xff)
            continue;
        if (framesBeginHere(rest, mpegFrameHeader) == true)
            return sound(SoundFormat::Mpeg, at);
        if (framesBeginHere(rest, adtsFrameHeader) == true)
            return sound(SoundFormat::AacAdts, at);
    }
    return std::nullopt;
}

bool hasAny(QByteArrayView type, std::initializer_list<QByteArrayView> words)
{
    return std::any_of(words.begin(), words.end(), [type](QByteArrayView word) { return type.contains(word); });
}

// The end of what is looked at, and no frame in it. Under a type whose frames would have shown themselves this is
// noise; under a type that nobody here knows, GStreamer shall have a look.
SniffedBody withoutFrames(QByteArrayView first, QByteArrayView contentType)
{
    if (tagSize(first) > first.size())
        return sound(contentType.contains("aac") ? SoundFormat::AacAdts : SoundFormat::Mpeg);
    const bool framed =
        hasAny(contentType, { "audio/mp", "audio/x-mp", "mp3", "aac", "ogg", "opus", "vorbis", "flac" });
    const bool mute = hasAny(contentType, { "text/", "image/", "html", "xml", "json", "javascript" });
    return first.isEmpty() || (framed && !contentType.contains("mp4")) || mute ? notSound : sound(SoundFormat::Other);
}

}

SniffedBody sniffBody(QByteArrayView first, QByteArrayView contentType, BodyEnd end)
{
    const QByteArrayView looked = first.first(std::min(first.size(), sniffLimit));
    const bool allThere = end == BodyEnd::Reached || looked.size() >= sniffLimit;
    if (const std::optional<SniffedBody> marked = byMark(looked))
        return *marked;
    if (isTransportStream(looked))
        return sound(SoundFormat::MpegTs);
    if (const std::optional<SniffedBody> frames = byFrames(looked, tagSize(looked)))
        return *frames;
    if (const std::optional<BodyKind> text = kindOfText(looked, contentType, allThere))
        return { *text, SoundFormat::Other, 0 };
    return allThere ? withoutFrames(looked, contentType) : needsMore;
}

}
