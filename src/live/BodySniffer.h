// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/SoundFormat.h"

#include <QByteArrayView>

namespace velarin::live {

enum class BodyKind
{
    // Not to be told yet. Never at the end of the body, and never once sniffLimit bytes are there.
    NeedsMore,
    // `format` says what to decode it with, `start` where its first whole frame begins.
    Sound,
    // An m3u or pls list of addresses; told only when all of it is there (or sniffLimit of it).
    Playlist,
    // An HLS playlist, master or media; told as soon as it is known.
    SegmentList,
    // A web page, a text, a picture, an archive: nothing to hear, whatever the type claims.
    NotSound,
};

enum class BodyEnd
{
    NotYet,
    Reached,
};

struct SniffedBody
{
    BodyKind kind{ BodyKind::NeedsMore };
    // Of BodyKind::Sound.
    SoundFormat format{ SoundFormat::Other };
    // Of BodyKind::Sound: bytes before the first frame, which no decoder needs. 0 where that is not known.
    qsizetype start{ 0 };
    bool operator==(const SniffedBody&) const = default;
};

// No more than this of a body is looked at.
constexpr qsizetype sniffLimit = 64 * 1024;

// What a body is, by all of its first bytes so far (metadata blocks taken out). The bytes decide; the media type, lower
// case and bare, helps only where they do not. An empty body that has ended is NotSound. A pure function: call it again
// with more bytes while it says NeedsMore.
[[nodiscard]] SniffedBody sniffBody(QByteArrayView first, QByteArrayView contentType, BodyEnd end);

}
