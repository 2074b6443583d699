// SPDX-License-Identifier: GPL-3.0-or-later
// The face of the coordinator that the media keys see.
#include "coordination/PlaybackCoordinator.h"
#include "coordination/PlaybackEngine.h"
#include "coordination/RemoteCommands.h"
#include "platform/MediaControls.h"

namespace velarin {

void PlaybackCoordinator::configureRemoteCommands()
{
    if (m_wired)
        return;
    m_wired = true;
    m_controls.setHandlers({
        .play = [this] { command(&RemotePlaybackTarget::resume); },
        .pause = [this] { command(&RemotePlaybackTarget::pause); },
        .togglePlayPause = [this] { command(&RemotePlaybackTarget::togglePlayback); },
        .stop = [this] { command(&RemotePlaybackTarget::stop); },
        .next = [this] { command(&RemotePlaybackTarget::next); },
        .previous = [this] { command(&RemotePlaybackTarget::previous); },
        .skip = [this](double seconds) { skip(seconds); },
        .changePosition = [this](double seconds) { changePosition(seconds); },
    });
    refreshCommands();
}

void PlaybackCoordinator::refreshCommands()
{
    const PlaybackEngine* sounding = activeEngine();
    for (const auto& [command, offered] : offeredCommands(m_active, sounding ? sounding->queueSize() : 0))
        m_controls.setEnabled(command, offered);
}

void PlaybackCoordinator::command(void (RemotePlaybackTarget::*operation)())
{
    // Any key with nothing active brings the last station back, stop and next included.
    if (PlaybackEngine* sounding = activeEngine())
        (sounding->*operation)();
    else
        resumeLast();
}

void PlaybackCoordinator::skip(double seconds)
{
    if (PlaybackEngine* podcasts = engine(Source::podcast))
        podcasts->seek(podcasts->position().value_or(0.0) + seconds);
}

void PlaybackCoordinator::changePosition(double seconds)
{
    if (PlaybackEngine* target = engine(m_active == Source::music ? Source::music : Source::podcast))
        target->seek(seconds);
}

}
