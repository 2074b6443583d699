// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "catalogue/Station.h"
#include "platform/MediaControls.h"
#include "radio/PlaybackState.h"

namespace velarin {

// What the radio shows of itself.
struct RadioDisplay
{
    Station station;
    PlaybackState state;
    std::optional<QString> songTitle;
    std::optional<QString> songArtist;
    qint64 queueCount{ 0 };
    qint64 queueIndex{ 0 };
    QImage artwork;
};

// The same for the system's now-playing display. Where there is no song, the status line stands in for the artist, so
// that a reconnection can be read there too.
[[nodiscard]] NowPlaying radioNowPlaying(const RadioDisplay& display);
// With a station loaded, never stopped: the keys reach the radio.
[[nodiscard]] NowPlayingState radioNowPlayingState(const PlaybackState& state);

}
