// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

namespace velarin {

// The machine's sleep, its waking and its shutting down. Main thread only.
class SleepMonitor
{
public:
    // Holds the sleep back while any copy of it lives. The system waits a few seconds at the most (logind: 5).
    using SleepDelay = std::shared_ptr<void>;

    struct Handlers
    {
        // The machine is about to sleep, and does so when the last copy of the delay is gone.
        std::function<void(SleepDelay)> willSleep;
        std::function<void()> didWake;
    };

    virtual ~SleepMonitor() = default;

    // Called once. Without a service that knows (no logind) nothing is ever told.
    virtual void start(Handlers handlers) = 0;

    // The machine is about to shut down or restart: the program quits in order. Told only after start().
    virtual void setShutDownHandler(std::function<void()> willShutDown) = 0;
};

}
