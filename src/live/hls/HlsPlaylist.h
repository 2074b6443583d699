// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QUrl>

#include <optional>
#include <variant>

namespace velarin::live {

// The playlists of HTTP Live Streaming (RFC 8216), as far as a radio needs them: what is seen, not heard, and what only
// players of low latency use is passed over.

// No more than this of a playlist is read, and no more than these many entries are taken from it: the first of a list
// of variants, the last of a list of segments, since a live list grows at its end.
constexpr qsizetype hlsByteLimit = 4 * 1024 * 1024;
constexpr qsizetype hlsVariantLimit = 64;
constexpr qsizetype hlsSegmentLimit = 10'000;

struct HlsByteRange
{
    qint64 length{ 0 };
    qint64 offset{ 0 };
    bool operator==(const HlsByteRange&) const = default;
};

// How a segment is encrypted (section 4.3.2.4): AES-128 in CBC mode over the whole segment.
struct HlsKey
{
    QUrl url;
    // 16 bytes; absent: the segment's sequence number, as a big-endian number of 128 bits.
    std::optional<QByteArray> initializationVector;
    bool operator==(const HlsKey&) const = default;
};

// What must stand before the bytes of a segment of fragmented MP4 (section 4.3.2.5).
struct HlsMap
{
    QUrl url;
    std::optional<HlsByteRange> range;
    bool operator==(const HlsMap&) const = default;
};

struct HlsSegment
{
    QUrl url;
    // Seconds, as the list claims; at least 0.
    double duration{ 0.0 };
    std::optional<HlsByteRange> range;
    qint64 sequence{ 0 };
    // Encoder, format or time stamps change before this segment.
    bool discontinuity{ false };
    // The list says itself that the segment is not there (EXT-X-GAP).
    bool gap{ false };
    std::optional<HlsKey> key;
    // It is encrypted in a way that nobody here can undo.
    bool undecipherable{ false };
    std::optional<HlsMap> map;
    bool operator==(const HlsSegment&) const = default;
};

struct HlsMediaPlaylist
{
    // Seconds; no segment is longer. At least 1 where the list says nothing usable.
    double targetDuration{ 1.0 };
    QList<HlsSegment> segments;
    // Nothing will be added any more.
    bool ended{ false };
    // Seconds from the start, or from the end if negative, at which the list wishes to be begun.
    std::optional<double> startOffset;

    // Of all its segments, in seconds.
    [[nodiscard]] double duration() const;
    bool operator==(const HlsMediaPlaylist&) const = default;
};

struct HlsVariant
{
    QUrl url;
    // Bits per second at the most; 0 where the list does not say.
    qint64 bandwidth{ 0 };
    // It carries pictures, as far as its codecs tell.
    bool hasVideo{ false };
    // Where the sound is, if not in the variant itself: the list of its audio rendition.
    std::optional<QUrl> audioUrl;
    bool operator==(const HlsVariant&) const = default;
};

struct HlsMasterPlaylist
{
    // In the order of the list.
    QList<HlsVariant> variants;
    bool operator==(const HlsMasterPlaylist&) const = default;
};

// Why a text is no playlist to play.
enum class HlsPlaylistError
{
    // It does not begin with "#EXTM3U".
    NotHls,
    // No variant and no segment, and no end either.
    Empty,
    // Beyond hlsByteLimit.
    TooLong,
};

using HlsPlaylist = std::variant<HlsMasterPlaylist, HlsMediaPlaylist, HlsPlaylistError>;

// Reads a playlist; relative addresses are resolved against `base`, which is the playlist's own address after
// redirects. Tolerant where the meaning is plain: what it does not know or cannot read is passed over, an address that
// is neither http nor https is left out.
[[nodiscard]] HlsPlaylist readHlsPlaylist(QByteArrayView bytes, const QUrl& base);

}
