// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/SleepMonitor.h"

namespace velarin::test {

class FakeSleepMonitor final : public SleepMonitor
{
public:
    void start(Handlers newHandlers) override { handlers = std::move(newHandlers); }
    void setShutDownHandler(std::function<void()> handler) override { willShutDown = std::move(handler); }

    // Tells the sleep and answers with the delay's life: false once everybody has let go of it.
    std::function<bool()> sleep()
    {
        auto delay = std::make_shared<int>(0);
        const std::weak_ptr<int> watch = delay;
        handlers.willSleep(std::move(delay));
        return [watch] { return !watch.expired(); };
    }

    Handlers handlers;
    std::function<void()> willShutDown;
};

}
