// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/Connection.h"
#include "live/EngineLoop.h"

#include <mutex>
#include <thread>
#include <vector>

namespace velarin::live {

class CurlLoop;
class TimerQueue;

struct TransportSettings
{
    // A file of certificate authorities (PEM) that are trusted in place of the system's bundle; empty: the system's.
    QByteArray certificateAuthorities;
    // For one address and its TLS handshake. Longer than every watchdog of the engine above, which decide.
    std::chrono::milliseconds connectTimeout{ std::chrono::seconds(60) };
};

// The engine's own thread with its loop and its connections. It sleeps until a socket, a timer or post() has something
// for it, and never otherwise.
//
// A turn: what was posted, then the timers that are due, then the bytes of the connections. Listeners are called from
// the last step and from nowhere else.
//
// The destructor runs what was posted before it, then ends the thread; what is posted from then on, and timers that
// have not fired, are dropped unrun. Connections have to be destroyed before, on the engine's thread: their owner posts
// that. Tasks may outlive the loop.
class LiveThread final : public EngineLoop, public ConnectionFactory
{
public:
    explicit LiveThread(TransportSettings settings = {});
    ~LiveThread() override;
    LiveThread(const LiveThread&) = delete;
    LiveThread& operator=(const LiveThread&) = delete;

    void post(std::function<void()> work) override;
    [[nodiscard]] std::chrono::nanoseconds now() const override;
    [[nodiscard]] Task after(std::chrono::nanoseconds delay, std::function<void()> fire) override;

    [[nodiscard]] std::unique_ptr<Connection> open(const StreamRequest& request, ConnectionListener& listener) override;
    [[nodiscard]] std::shared_ptr<HttpVisit> beginVisit() override;

private:
    void run();
    void runPosted();
    [[nodiscard]] std::chrono::milliseconds timeToSleep() const;

    const TransportSettings m_settings;
    const std::unique_ptr<CurlLoop> m_curl;
    // Engine's thread only; shared with the tasks, which may outlive it.
    const std::shared_ptr<TimerQueue> m_timers;
    bool m_stopping{ false };

    // Protected by m_mutex.
    std::mutex m_mutex;
    std::vector<std::function<void()>> m_posted;

    // Last: it uses all of the above.
    std::thread m_thread;
};

}
