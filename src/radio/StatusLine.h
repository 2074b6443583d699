// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "radio/PlaybackState.h"

namespace velarin {

// What the radio is doing, in one line for the listener.
[[nodiscard]] QString statusLine(const PlaybackState& state);

}
