// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/LiveThread.h"

#include <atomic>
#include <future>
#include <mutex>

namespace velarin::test {

// Keeps what a connection tells, for another thread to look at.
class RecordingListener : public live::ConnectionListener
{
public:
    void headReceived(const live::StreamHead& head) override
    {
        const std::scoped_lock lock(m_mutex);
        m_calls += 'h';
        m_head = head;
    }
    void bytesReceived(QByteArrayView bytes) override
    {
        const std::scoped_lock lock(m_mutex);
        if (!m_calls.endsWith('b'))
            m_calls += 'b';
        m_bytes += bytes;
    }
    void ended(const AudioErrorChain& cause) override
    {
        const std::scoped_lock lock(m_mutex);
        m_calls += 'e';
        m_cause = cause;
    }

    // h, b (any number in a row), e: the calls in their order.
    [[nodiscard]] QByteArray calls() const { return copy(m_calls); }
    [[nodiscard]] live::StreamHead head() const { return copy(m_head); }
    [[nodiscard]] QByteArray bytes() const { return copy(m_bytes); }
    [[nodiscard]] AudioErrorChain cause() const { return copy(m_cause); }

private:
    template<typename Value>
    Value copy(const Value& value) const
    {
        const std::scoped_lock lock(m_mutex);
        return value;
    }

    mutable std::mutex m_mutex;
    QByteArray m_calls;
    live::StreamHead m_head;
    QByteArray m_bytes;
    AudioErrorChain m_cause;
};

// Runs `work` on the engine's thread and waits for it.
inline void runOn(live::LiveThread& thread, const std::function<void()>& work)
{
    std::promise<void> done;
    thread.post([&] {
        work();
        done.set_value();
    });
    done.get_future().wait();
}

}
