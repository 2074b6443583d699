// SPDX-License-Identifier: GPL-3.0-or-later
#include "coordination/Transport.h"

#include "coordination/PlaybackCoordinator.h"
#include "coordination/PlaybackEngine.h"

namespace velarin {

void Transport::toggle(const PlaybackCoordinator& coordinator)
{
    PlaybackEngine* engine = coordinator.activeEngine();
    if (!engine)
        coordinator.resumeLast();
    else if (engine->isSounding())
        engine->pause();
    else
        engine->resume();
}

bool Transport::canSkip(const PlaybackCoordinator& coordinator)
{
    const PlaybackEngine* engine = coordinator.activeEngine();
    return engine && engine->queueSize() > 1;
}

bool Transport::isPlaying(const PlaybackCoordinator& coordinator)
{
    const PlaybackEngine* engine = coordinator.activeEngine();
    return engine && engine->isPlaying();
}

}
