// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/SoundFormat.h"

#include <QByteArrayView>

#include <memory>
#include <optional>

namespace velarin::live {

class FrameCounter;

// Tells how many seconds of sound encoded bytes hold, without decoding them. Fed piece by piece, cut anywhere.
//
// MPEG audio, ADTS and FLAC are counted by their frames, Ogg by its granule positions (Vorbis, Opus, FLAC, Speex,
// chained or not), everything else by its bit rate. Damage costs what it destroys: the meter finds the next frame.
class FrameMeter
{
public:
    // Assumed where no frame tells, and no server claims one.
    static constexpr qint64 assumedBitRate = 128'000;

    explicit FrameMeter(SoundFormat format, std::optional<qint64> claimedBitRate = std::nullopt);
    FrameMeter(FrameMeter&&) noexcept;
    FrameMeter& operator=(FrameMeter&&) noexcept;
    ~FrameMeter();

    // Seconds of the frames that these bytes completed: 0 or more. The sum over a stream is its sound.
    double feed(QByteArrayView bytes);

    // All that feed() told so far.
    [[nodiscard]] double seconds() const { return m_seconds; }
    // Bytes fed so far.
    [[nodiscard]] qint64 position() const { return m_position; }
    // Where the first frame (Ogg: page) begins, as a count of bytes fed; absent until one was found.
    [[nodiscard]] std::optional<qint64> firstBoundary() const;
    // Where the frame begins that is still incomplete: bytes before it are whole frames. Absent until one was found.
    [[nodiscard]] std::optional<qint64> lastBoundary() const;

private:
    qint64 m_bitRate{ assumedBitRate };
    std::unique_ptr<FrameCounter> m_counter;
    bool m_countsByRate{ false };
    double m_seconds{ 0.0 };
    qint64 m_position{ 0 };
};

}
