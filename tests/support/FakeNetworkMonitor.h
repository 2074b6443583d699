// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/NetworkMonitor.h"

namespace velarin::test {

class FakeNetworkMonitor final : public NetworkMonitor
{
public:
    void start(std::function<void(bool)> newHandler) override { changed = std::move(newHandler); }

    // Called by the test to say what the network does; empty until it was started.
    std::function<void(bool online)> changed;
};

}
