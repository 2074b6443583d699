// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "coordination/PlaybackCoordinator.h"
#include "platform/MediaControls.h"

#include <array>
#include <utility>

namespace velarin {

// Which media keys are offered, by what sounds and by the length of its queue.
[[nodiscard]] std::array<std::pair<MediaCommand, bool>, 5> offeredCommands(
    PlaybackCoordinator::Source active, qsizetype queueSize);

}
