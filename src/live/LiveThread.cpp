// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/LiveThread.h"

#include "live/CurlConnection.h"
#include "live/CurlLoop.h"
#include "live/TimerQueue.h"

#include <algorithm>
#include <csignal>
#include <utility>

namespace velarin::live {
namespace {

// As long as poll() can be told. Waking once in three weeks for nothing is as good as never.
constexpr std::chrono::milliseconds asGoodAsForEver{ std::numeric_limits<int>::max() };

// TLS writes into a connection that is gone would end the program.
void blockPipeSignal()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

}

LiveThread::LiveThread(TransportSettings settings)
    : m_settings(std::move(settings))
    , m_curl(std::make_unique<CurlLoop>())
    , m_timers(std::make_shared<TimerQueue>())
    , m_thread([this] { run(); })
{
}

LiveThread::~LiveThread()
{
    post([this] { m_stopping = true; });
    m_thread.join();
}

void LiveThread::post(std::function<void()> work)
{
    {
        const std::scoped_lock lock(m_mutex);
        m_posted.push_back(std::move(work));
    }
    m_curl->wakeUp();
}

std::chrono::nanoseconds LiveThread::now() const
{
    return std::chrono::steady_clock::now().time_since_epoch();
}

Task LiveThread::after(std::chrono::nanoseconds delay, std::function<void()> fire)
{
    const TimerQueue::Key key = m_timers->add(now() + delay, std::move(fire));
    return Task([timers = std::weak_ptr(m_timers), key] {
        if (const std::shared_ptr<TimerQueue> queue = timers.lock())
            queue->cancel(key);
    });
}

std::unique_ptr<Connection> LiveThread::open(const StreamRequest& request, ConnectionListener& listener)
{
    return std::make_unique<CurlConnection>(*m_curl, m_settings, request, listener);
}

std::shared_ptr<HttpVisit> LiveThread::beginVisit()
{
    return std::make_shared<CurlVisit>();
}

void LiveThread::run()
{
    pthread_setname_np(pthread_self(), "velarin-live");
    blockPipeSignal();
    while (!m_stopping) {
        m_curl->sleep(timeToSleep());
        runPosted();
        m_timers->fireDue(now());
        m_curl->turn();
    }
    m_timers->clear();
}

// Work that is posted meanwhile has woken the next sleep.
void LiveThread::runPosted()
{
    std::vector<std::function<void()>> posted;
    {
        const std::scoped_lock lock(m_mutex);
        posted.swap(m_posted);
    }
    for (std::function<void()>& work : posted) {
        if (m_stopping)
            break;
        work();
        // What the work holds on to ends before the next one begins, as its poster expects.
        work = nullptr;
    }
}

std::chrono::milliseconds LiveThread::timeToSleep() const
{
    const std::optional<std::chrono::nanoseconds> due = m_timers->nextDue();
    if (!due)
        return asGoodAsForEver;
    // Rounded up: woken a moment too early, the thread would spin until the timer is due.
    const auto rest = std::chrono::ceil<std::chrono::milliseconds>(*due - now());
    return std::clamp(rest, std::chrono::milliseconds(0), asGoodAsForEver);
}

}
