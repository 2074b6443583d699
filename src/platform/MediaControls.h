// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>
#include <QUrl>

#include <functional>
#include <optional>

namespace velarin {

enum class NowPlayingState
{
    Playing,
    Paused,
    Stopped,
};

// What an engine tells the system about what sounds.
struct NowPlaying
{
    QString title;
    QString artist;
    QString album;
    QString genre;
    bool isLive{ false };
    // 1.0 while the clock of the programme runs, else 0.0.
    double rate{ 0.0 };
    double defaultRate{ 1.0 };
    // Names the item: a station's, an episode's or a track's id.
    QString contentId;
    qint64 queueCount{ 0 };
    qint64 queueIndex{ 0 };
    // Seconds; absent for a live stream.
    std::optional<double> duration;
    std::optional<double> elapsed;
    // Null where there is no picture.
    QImage artwork;

    bool operator==(const NowPlaying&) const = default;
};

enum class MediaCommand
{
    SkipForward,
    SkipBackward,
    ChangePosition,
    Next,
    Previous,
};

// The system's media keys and its now-playing display. Main thread only.
//
// The display shows what was last published, and never asks an engine. Commands arrive whether they are enabled or
// not: enabling only tells the desktop which buttons to show.
class MediaControls
{
public:
    struct Handlers
    {
        std::function<void()> play;
        std::function<void()> pause;
        std::function<void()> togglePlayPause;
        std::function<void()> stop;
        std::function<void()> next;
        std::function<void()> previous;
        // Seconds forward, or backward if negative.
        std::function<void(double seconds)> skip;
        // Seconds from the start.
        std::function<void(double seconds)> changePosition;
    };

    // What is not an engine's business: the root sets it.
    struct ApplicationHandlers
    {
        std::function<void()> raise;
        std::function<void()> quit;
        // Any text that a caller sent; the receiver checks it.
        std::function<void(const QString& address)> openUri;
        // From 0 to 1; clamped by the receiver.
        std::function<void(double volume)> setVolume;
    };

    virtual ~MediaControls() = default;

    virtual void setHandlers(Handlers handlers) = 0;
    virtual void setApplicationHandlers(ApplicationHandlers handlers) = 0;
    virtual void setEnabled(MediaCommand command, bool enabled) = 0;
    // Without a value nothing is loaded.
    virtual void publish(const std::optional<NowPlaying>& nowPlaying, NowPlayingState state) = 0;
    // The user's volume, 0 to 1.
    virtual void publishVolume(double volume) = 0;
};

}
