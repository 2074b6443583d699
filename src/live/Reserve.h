// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/FrameMeter.h"
#include "live/Seconds.h"
#include "live/SoundFormat.h"

#include <QByteArray>
#include <QByteArrayView>

#include <deque>
#include <optional>

namespace velarin::live {

// Encoded sound that was received and not yet handed on, in stretches: one a format, encoder or place where the bytes
// do not join. Added to at the newest stretch, taken from the oldest. It bounds nothing by itself: its owner stops
// reading when there is enough.
class Reserve
{
public:
    void startStretch(SoundFormat format, std::optional<qint64> claimedBitRate);
    // To the newest stretch, of which there has to be one. Answers the seconds of sound that the bytes completed:
    // `lasting` if that is known, else counted.
    Seconds add(QByteArrayView bytes, std::optional<Seconds> lasting = std::nullopt);

    // About a fifth of a second of the oldest stretch; empty when it has nothing (left).
    [[nodiscard]] QByteArray take();
    // Whether the oldest stretch is used up and the one behind it has bytes.
    [[nodiscard]] bool hasNextStretch() const;
    // Leaves the oldest stretch, with what it still holds.
    void leaveStretch();
    // Drops what the oldest stretch still holds.
    void emptyStretch();
    // Of the oldest stretch, of which there has to be one.
    [[nodiscard]] SoundFormat format() const { return m_stretches.front().format; }
    // Seconds of sound that came before the oldest stretch, since this was made.
    [[nodiscard]] Seconds place() const { return m_stretches.front().place; }
    [[nodiscard]] std::size_t stretches() const { return m_stretches.size(); }

    // Of all stretches.
    [[nodiscard]] Seconds seconds() const;
    [[nodiscard]] qint64 bytes() const;

private:
    struct Chunk
    {
        QByteArray bytes;
        Seconds seconds{ 0.0 };
    };
    struct Stretch
    {
        SoundFormat format;
        FrameMeter meter;
        Seconds place{ 0.0 };
        std::deque<Chunk> chunks;
        Seconds seconds{ 0.0 };
        qint64 bytes{ 0 };
    };

    std::deque<Stretch> m_stretches;
    // Of all sound ever added.
    Seconds m_added{ 0.0 };
};

}
