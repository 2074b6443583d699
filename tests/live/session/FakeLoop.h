// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/EngineLoop.h"

#include <QtGlobal>

#include <deque>
#include <map>
#include <memory>

namespace velarin::live::test {

// The engine's loop in virtual time, on the test's own thread. Time stands still until the test moves it.
class FakeLoop final : public EngineLoop
{
public:
    void post(std::function<void()> work) override { m_posted.push_back(std::move(work)); }
    [[nodiscard]] std::chrono::nanoseconds now() const override { return m_now; }
    [[nodiscard]] Task after(std::chrono::nanoseconds delay, std::function<void()> fire) override;

    // Runs what is posted and due, and what comes of it, and hands the main thread its events, until nothing is left.
    void settle();
    // Moves time, settling at the moment of each timer.
    void advance(std::chrono::nanoseconds duration);

    [[nodiscard]] std::size_t timers() const { return m_timers->size(); }

private:
    using Key = std::pair<std::chrono::nanoseconds, quint64>;
    using Timers = std::map<Key, std::function<void()>>;

    [[nodiscard]] bool fireDue();

    std::deque<std::function<void()>> m_posted;
    std::shared_ptr<Timers> m_timers{ std::make_shared<Timers>() };
    quint64 m_lastTimer{ 0 };
    std::chrono::nanoseconds m_now{ std::chrono::hours(1) };
};

}
