// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/RadioNowPlaying.h"

#include "radio/StatusLine.h"

namespace velarin {

NowPlaying radioNowPlaying(const RadioDisplay& display)
{
    NowPlaying nowPlaying;
    nowPlaying.title = display.songTitle.value_or(display.station.name);
    nowPlaying.artist =
        display.songTitle ? display.songArtist.value_or(display.station.name) : statusLine(display.state);
    nowPlaying.album = display.station.name;
    nowPlaying.genre = display.station.genre;
    nowPlaying.isLive = true;
    nowPlaying.rate = is<Playing>(display.state) ? 1.0 : 0.0;
    nowPlaying.defaultRate = 1.0;
    nowPlaying.contentId = display.station.id;
    nowPlaying.queueCount = display.queueCount;
    nowPlaying.queueIndex = display.queueIndex;
    nowPlaying.artwork = display.artwork;
    return nowPlaying;
}

NowPlayingState radioNowPlayingState(const PlaybackState& state)
{
    const bool sounds = is<Playing>(state) || is<Connecting>(state) || is<Buffering>(state);
    return sounds ? NowPlayingState::Playing : NowPlayingState::Paused;
}

}
