// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/FrameCounter.h"

#include <unordered_map>

namespace velarin::live {

// Counts the sound of Ogg pages (RFC 3533) by their granule positions: Vorbis, Opus, FLAC and Speex. A new song, with a
// new logical stream, goes on where the last one ended. Where pages are missing (a listener joins in the middle, or
// bytes are lost) the granule position says nothing about the page itself: its sound is estimated by its bytes.
class OggPageCounter final : public FrameCounter
{
public:
    // Bits per second for pages that are estimated, where the stream names no rate of its own.
    explicit OggPageCounter(qint64 assumedBitRate);

private:
    struct Page
    {
        quint32 serial{ 0 };
        quint32 sequence{ 0 };
        // Absent where no packet ends on the page.
        std::optional<qint64> granule;
        bool first{ false };
        // Of the whole page.
        qsizetype size{ 0 };
        QByteArrayView content;
    };
    struct LogicalStream
    {
        // Granules per second; 0: not sound (a picture, a video), which is not counted.
        int rate{ 0 };
        qint64 bitRate{ 0 };
        qint64 granule{ 0 };
        quint32 sequence{ 0 };
    };

    [[nodiscard]] Step step(QByteArrayView pending) override;
    [[nodiscard]] static std::optional<Page> readPage(QByteArrayView pending);
    [[nodiscard]] double secondsOf(const Page& page);
    void beginStream(const Page& page);

    const qint64 m_assumedBitRate;
    std::unordered_map<quint32, LogicalStream> m_streams;
};

}
