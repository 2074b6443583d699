// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <chrono>
#include <functional>
#include <map>
#include <optional>

namespace velarin::live {

// Timers in the order in which they are due; of two at the same moment the older fires first. One thread.
class TimerQueue
{
public:
    using Key = std::pair<std::chrono::nanoseconds, quint64>;

    Key add(std::chrono::nanoseconds due, std::function<void()> fire);
    // Does nothing for a timer that has fired.
    void cancel(const Key& timer) { m_timers.erase(timer); }
    void clear() { m_timers.clear(); }

    // Fires what is due at `now`, but nothing that is added meanwhile: a timer that sets itself anew must not keep the
    // thread from its sockets.
    void fireDue(std::chrono::nanoseconds now);
    [[nodiscard]] std::optional<std::chrono::nanoseconds> nextDue() const;

private:
    std::map<Key, std::function<void()>> m_timers;
    quint64 m_lastNumber{ 0 };
};

}
