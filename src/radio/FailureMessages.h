// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "radio/PlaybackState.h"

#include <chrono>

namespace velarin {

// What the listener reads when a station does not come. All of it stands here.
namespace FailureMessages {

// The end of a run. "timeout" is how long the station had for its answer.
[[nodiscard]] QString gaveUp(PlaybackFailure::Kind kind, const QString& stationName, std::chrono::seconds timeout);
// The end of a run that is followed by another one.
[[nodiscard]] QString retriesPatiently(const QString& stationName, std::chrono::seconds delay);
[[nodiscard]] QString offline();

}

}
