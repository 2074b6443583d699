// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/LiveEngine.h"
#include "live/LiveThread.h"

#include <memory>

namespace velarin {
class DeviceSelection;
}

namespace velarin::live {

// The engine of the running program: libcurl on a thread of its own, GStreamer, the chosen sound device. A
// LiveAudioPlayer starts it with its first item.
[[nodiscard]] std::shared_ptr<LiveEngine> startProductionEngine(
    std::shared_ptr<DeviceSelection> selection, TransportSettings transport = {});

}
