// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>

#include <optional>

namespace velarin::live {

// What the header of one frame of encoded sound says.
struct FrameHeader
{
    // Bytes of the whole frame, its header included.
    qsizetype size{ 0 };
    int samples{ 0 };
    int sampleRate{ 0 };
    // The bits that stay the same from frame to frame of one encoder.
    quint32 kind{ 0 };
    bool operator==(const FrameHeader&) const = default;

    [[nodiscard]] double seconds() const { return static_cast<double>(samples) / sampleRate; }
};

// The frame that the bytes begin with; absent if they begin with none, or hold less than its header.
using FrameHeaderReader = std::optional<FrameHeader> (*)(QByteArrayView bytes);

// No header below is longer.
constexpr qsizetype longestFrameHeader = 16;

// MPEG-1 and MPEG-2 audio, layers I to III, and the unofficial 2.5 (ISO 11172-3, 13818-3). Not the free format, whose
// frames do not say their length.
[[nodiscard]] std::optional<FrameHeader> mpegFrameHeader(QByteArrayView bytes);

// AAC in ADTS (ISO 14496-3, 1.A.3.2). High-efficiency frames name the core's rate and count its samples: the same time.
[[nodiscard]] std::optional<FrameHeader> adtsFrameHeader(QByteArrayView bytes);

// A frame of bare FLAC (RFC 9639, 9.1), its checksum verified. Its size is not known from its header: 0. The rate is 0
// where the header leaves it to the beginning of the stream.
[[nodiscard]] std::optional<FrameHeader> flacFrameHeader(QByteArrayView bytes);

// AAC in LOAS (ISO 14496-3, 1.7.2). Neither its samples nor its rate stand in the header: 1024 and 0.
[[nodiscard]] std::optional<FrameHeader> loasFrameHeader(QByteArrayView bytes);

// Whether two whole frames in a row, of one kind, begin here: what random bytes hardly ever do. Absent while too few
// bytes are there to tell.
[[nodiscard]] std::optional<bool> framesBeginHere(QByteArrayView bytes, FrameHeaderReader reader);

}
