// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/FrameHeaders.h"
#include "live/SoundFormat.h"

#include <QByteArray>

#include <memory>

namespace velarin::live {

// Counts the sound of one kind of frame, and finds the next frame where bytes are damaged. Keeps no more than one
// frame's bytes.
class FrameCounter
{
public:
    virtual ~FrameCounter() = default;

    // Seconds of the frames that these bytes completed.
    double count(QByteArrayView bytes);

    [[nodiscard]] std::optional<qint64> firstBoundary() const { return m_firstBoundary; }
    [[nodiscard]] std::optional<qint64> lastBoundary() const { return m_lastBoundary; }

protected:
    struct Step
    {
        // Bytes done with; 0 asks for more of them.
        qsizetype bytes{ 0 };
        double seconds{ 0.0 };
    };

    // Looks at what begins at the first of these bytes, of which there is at least one.
    [[nodiscard]] virtual Step step(QByteArrayView pending) = 0;
    // A frame begins `offset` bytes into what step() was given.
    void markBoundary(qsizetype offset);

private:
    QByteArray m_pending;
    // Where step()'s bytes begin, in bytes counted.
    qint64 m_position{ 0 };
    std::optional<qint64> m_firstBoundary;
    std::optional<qint64> m_lastBoundary;
};

// For formats whose frames say their length.
class SizedFrameCounter final : public FrameCounter
{
public:
    explicit SizedFrameCounter(FrameHeaderReader reader);

private:
    [[nodiscard]] Step step(QByteArrayView pending) override;
    [[nodiscard]] Step takeFrame(const FrameHeader& header, QByteArrayView pending);

    const FrameHeaderReader m_reader;
    // The kind of frame that is being followed; absent while one is looked for.
    std::optional<quint32> m_kind;
};

// FLAC without a container: a frame lasts until the next header is found.
class FlacFrameCounter final : public FrameCounter
{
private:
    [[nodiscard]] Step step(QByteArrayView pending) override;

    // From the beginning of the stream, for frames that leave it open.
    int m_streamRate{ 44100 };
    // Of the frame that is running.
    double m_running{ 0.0 };
};

// By the bit rate alone.
class RateCounter final : public FrameCounter
{
public:
    explicit RateCounter(qint64 bitRate);

private:
    [[nodiscard]] Step step(QByteArrayView pending) override;

    const double m_secondsPerByte;
};

}
