// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Clock.h"

#include <memory>

namespace velarin {

// The machine's clocks. One timerfd on CLOCK_BOOTTIME (timerfd_create(2)), armed for the earliest timer, serves all of
// them, so nothing wakes the process while nothing is due. Timers that came due while the machine slept fire when it
// wakes, in the order of their moments; they do not wake it.
class BootClock final : public Clock
{
public:
    BootClock();
    // Timers that have not fired never will.
    ~BootClock() override;

    QDateTime now() const override;
    std::chrono::nanoseconds continuous() const override;
    Task after(std::chrono::nanoseconds delay, std::function<void()> fire) override;

private:
    class Timers;
    std::shared_ptr<Timers> m_timers;
};

}
