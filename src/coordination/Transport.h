// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace velarin {

class PlaybackCoordinator;

// Play, pause and "can I skip" for whichever source is active, so that a screen need not know which engine sounds.
namespace Transport {

void toggle(const PlaybackCoordinator& coordinator);
[[nodiscard]] bool canSkip(const PlaybackCoordinator& coordinator);
[[nodiscard]] bool isPlaying(const PlaybackCoordinator& coordinator);

}

}
