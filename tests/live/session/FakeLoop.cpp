// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/session/FakeLoop.h"

#include <QCoreApplication>

#include <algorithm>

namespace velarin::live::test {

Task FakeLoop::after(std::chrono::nanoseconds delay, std::function<void()> fire)
{
    const Key key{ m_now + std::max(delay, std::chrono::nanoseconds(0)), ++m_lastTimer };
    m_timers->emplace(key, std::move(fire));
    return Task([timers = std::weak_ptr(m_timers), key] {
        if (const auto alive = timers.lock())
            alive->erase(key);
    });
}

bool FakeLoop::fireDue()
{
    if (m_timers->empty() || m_timers->begin()->first.first > m_now)
        return false;
    auto node = m_timers->extract(m_timers->begin());
    node.mapped()();
    return true;
}

void FakeLoop::settle()
{
    do {
        while (!m_posted.empty()) {
            const auto work = std::move(m_posted.front());
            m_posted.pop_front();
            work();
        }
        QCoreApplication::sendPostedEvents();
    } while (!m_posted.empty() || fireDue());
}

void FakeLoop::advance(std::chrono::nanoseconds duration)
{
    const auto end = m_now + duration;
    settle();
    while (!m_timers->empty() && m_timers->begin()->first.first <= end) {
        m_now = std::max(m_now, m_timers->begin()->first.first);
        settle();
    }
    m_now = end;
    settle();
}

}
