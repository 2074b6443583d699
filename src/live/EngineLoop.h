// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Task.h"

#include <chrono>
#include <functional>

namespace velarin::live {

// The loop of the engine's own thread, on which everything of the live engine runs but GStreamer's streaming threads
// and the callers' side of LiveAudioPlayer. It sleeps in curl_multi_poll without a tick.
class EngineLoop
{
public:
    virtual ~EngineLoop() = default;

    // From any thread: runs `work` on the engine's thread, in a later turn, in the order of the calls.
    virtual void post(std::function<void()> work) = 0;

    // The rest on the engine's thread only.

    // A clock that only runs forward (CLOCK_MONOTONIC: a stream does not age while the machine sleeps).
    [[nodiscard]] virtual std::chrono::nanoseconds now() const = 0;
    // `fire` once, never from inside this call.
    [[nodiscard]] virtual Task after(std::chrono::nanoseconds delay, std::function<void()> fire) = 0;
};

}
