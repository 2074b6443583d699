// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Clock.h"

#include <map>
#include <memory>

namespace velarin::test {

// Virtual time: it stands still until a test moves it. Wall clock and continuous clock move together; jumpTo() moves
// the wall clock alone.
class FakeClock final : public Clock
{
public:
    explicit FakeClock(QDateTime start = QDateTime(QDate(2026, 11, 21), QTime(7, 30), Qt::UTC));

    QDateTime now() const override;
    std::chrono::nanoseconds continuous() const override { return m_continuous; }
    Task after(std::chrono::nanoseconds delay, std::function<void()> fire) override;

    // Moves time forward, firing each timer at its own moment, in order; timers armed on the way fire too.
    void advance(std::chrono::nanoseconds duration);
    // The wall clock is set by somebody; timers do not notice.
    void jumpTo(const QDateTime& wallTime);

    [[nodiscard]] std::size_t pendingTimers() const;

private:
    struct Timers;
    std::shared_ptr<Timers> m_timers;
    std::chrono::nanoseconds m_continuous{ std::chrono::hours(1) };
    QDateTime m_wallStart;
    std::chrono::nanoseconds m_wallStartedAt{ m_continuous };
};

}
