// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/FakeClock.h"

#include <utility>

namespace velarin::test {

struct FakeClock::Timers
{
    using Key = std::pair<std::chrono::nanoseconds, quint64>;
    std::map<Key, std::function<void()>> pending;
    quint64 lastNumber{ 0 };
};

FakeClock::FakeClock(QDateTime start)
    : m_timers(std::make_shared<Timers>())
    , m_wallStart(std::move(start))
{
}

QDateTime FakeClock::now() const
{
    const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(m_continuous - m_wallStartedAt);
    return m_wallStart.addMSecs(passed.count());
}

Task FakeClock::after(std::chrono::nanoseconds delay, std::function<void()> fire)
{
    const Timers::Key key{ m_continuous + std::max(delay, std::chrono::nanoseconds(0)), ++m_timers->lastNumber };
    m_timers->pending.emplace(key, std::move(fire));
    return Task([timers = std::weak_ptr(m_timers), key] {
        if (auto alive = timers.lock())
            alive->pending.erase(key);
    });
}

void FakeClock::advance(std::chrono::nanoseconds duration)
{
    const auto end = m_continuous + duration;
    while (!m_timers->pending.empty() && m_timers->pending.begin()->first.first <= end) {
        auto node = m_timers->pending.extract(m_timers->pending.begin());
        m_continuous = node.key().first;
        node.mapped()();
    }
    m_continuous = end;
}

void FakeClock::jumpTo(const QDateTime& wallTime)
{
    m_wallStart = wallTime;
    m_wallStartedAt = m_continuous;
}

std::size_t FakeClock::pendingTimers() const
{
    return m_timers->pending.size();
}

}
