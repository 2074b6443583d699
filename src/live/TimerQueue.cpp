// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/TimerQueue.h"

#include <vector>

namespace velarin::live {

TimerQueue::Key TimerQueue::add(std::chrono::nanoseconds due, std::function<void()> fire)
{
    const Key key{ due, ++m_lastNumber };
    m_timers.emplace(key, std::move(fire));
    return key;
}

void TimerQueue::fireDue(std::chrono::nanoseconds now)
{
    std::vector<Key> due;
    for (auto timer = m_timers.begin(); timer != m_timers.end() && timer->first.first <= now; ++timer)
        due.push_back(timer->first);
    for (const Key& key : due)
        if (auto timer = m_timers.extract(key))
            timer.mapped()();
}

std::optional<std::chrono::nanoseconds> TimerQueue::nextDue() const
{
    return m_timers.empty() ? std::nullopt : std::optional(m_timers.begin()->first.first);
}

}
