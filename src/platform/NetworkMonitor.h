// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace velarin {

// Whether the machine has a network. Main thread only.
class NetworkMonitor
{
public:
    virtual ~NetworkMonitor() = default;

    // Calls `changed` on the main thread, in a later turn: once with the first verdict, then at each change. Called
    // once. Where nobody on the system knows, the verdict is "online" for ever: an offline verdict stops the radio's
    // retries, so it must never be a guess.
    virtual void start(std::function<void(bool online)> changed) = 0;
};

}
