// SPDX-License-Identifier: GPL-3.0-or-later
#include "coordination/RemoteCommands.h"

namespace velarin {

std::array<std::pair<MediaCommand, bool>, 5> offeredCommands(PlaybackCoordinator::Source active, qsizetype queueSize)
{
    using Source = PlaybackCoordinator::Source;
    const bool podcast = active == Source::podcast;
    const bool music = active == Source::music;
    const bool several = active != Source::none && queueSize > 1;
    return { {
        { MediaCommand::SkipForward, podcast },
        { MediaCommand::SkipBackward, podcast },
        { MediaCommand::ChangePosition, podcast || music },
        { MediaCommand::Next, several },
        // A single track has no former one, but going back starts it again.
        { MediaCommand::Previous, several || music },
    } };
}

}
