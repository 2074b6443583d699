// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace velarin {

// What the media keys can ask of whoever sounds. Safe in every state.
class RemotePlaybackTarget
{
public:
    virtual ~RemotePlaybackTarget() = default;

    virtual void resume() = 0;
    virtual void pause() = 0;
    virtual void togglePlayback() = 0;
    virtual void stop() = 0;
    virtual void next() = 0;
    virtual void previous() = 0;
};

// One of the three engines (radio, podcasts, music) as the coordinator, the transport, the volume and the sleep timer
// see it. Main thread only.
class PlaybackEngine : public RemotePlaybackTarget
{
public:
    // Its state is playing.
    [[nodiscard]] virtual bool isPlaying() const = 0;
    // Its toggle would pause it: the radio sounds while it connects, buffers and plays, the others while they play.
    [[nodiscard]] virtual bool isSounding() const = 0;
    [[nodiscard]] virtual qsizetype queueSize() const = 0;
    // Seconds; absent for the radio.
    [[nodiscard]] virtual std::optional<double> position() const { return std::nullopt; }
    // Seconds from the start; the radio does nothing.
    virtual void seek(double seconds) { static_cast<void>(seconds); }
    // Its part of the heartbeat line: "Radio · {name} · suona".
    [[nodiscard]] virtual QString heartbeatText() const = 0;
    // Linear factor, 0 to 1.
    virtual void setVolume(float volume) = 0;
};

}
