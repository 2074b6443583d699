// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/Executor.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace velarin {

// Jobs travel out through one queue and home through another, both under one mutex; Qt's event loop only wakes the main
// thread. A job is destroyed where it was made, and no thread ever sees memory that it did not get under the mutex.
class PoolExecutor::Pool final : public QObject
{
public:
    explicit Pool(int threads);
    ~Pool() override;

    std::shared_ptr<std::stop_source> add(Work work);

protected:
    void customEvent(QEvent* event) override;

private:
    struct Job
    {
        Work work;
        std::shared_ptr<std::stop_source> stop;
        Completion completion;
    };

    void serve(const std::stop_token& closing);
    std::unique_ptr<Job> next(const std::stop_token& closing);
    void deliver(std::unique_ptr<Job> job);

    // Protected by m_mutex.
    std::deque<std::unique_ptr<Job>> m_waiting;
    std::vector<std::unique_ptr<Job>> m_finished;
    std::vector<std::shared_ptr<std::stop_source>> m_running;

    std::mutex m_mutex;
    std::condition_variable_any m_wake;
    // Last, so that they have ended before anything above is destroyed.
    std::vector<std::jthread> m_threads;
};

PoolExecutor::Pool::Pool(int threads)
{
    m_threads.reserve(static_cast<std::size_t>(threads));
    for (int thread = 0; thread < threads; ++thread)
        m_threads.emplace_back([this](const std::stop_token& closing) { serve(closing); });
}

PoolExecutor::Pool::~Pool()
{
    for (std::jthread& thread : m_threads)
        thread.request_stop();
    const std::lock_guard lock(m_mutex);
    for (const auto& stop : m_running)
        stop->request_stop();
}

std::shared_ptr<std::stop_source> PoolExecutor::Pool::add(Work work)
{
    auto stop = std::make_shared<std::stop_source>();
    {
        const std::lock_guard lock(m_mutex);
        m_waiting.push_back(std::make_unique<Job>(Job{ std::move(work), stop, {} }));
    }
    m_wake.notify_one();
    return stop;
}

void PoolExecutor::Pool::serve(const std::stop_token& closing)
{
    while (auto job = next(closing)) {
        // The main thread looks at the same stop source before it runs the completion: work that was cancelled while
        // it ran leaves nothing behind.
        if (!job->stop->stop_requested())
            job->completion = job->work(job->stop->get_token());
        deliver(std::move(job));
    }
}

std::unique_ptr<PoolExecutor::Pool::Job> PoolExecutor::Pool::next(const std::stop_token& closing)
{
    std::unique_lock lock(m_mutex);
    if (!m_wake.wait(lock, closing, [this] { return !m_waiting.empty(); }) || closing.stop_requested())
        return nullptr;
    auto job = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_running.push_back(job->stop);
    return job;
}

void PoolExecutor::Pool::deliver(std::unique_ptr<Job> job)
{
    const std::lock_guard lock(m_mutex);
    std::erase(m_running, job->stop);
    m_finished.push_back(std::move(job));
    if (m_finished.size() == 1)
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void PoolExecutor::Pool::customEvent(QEvent*)
{
    std::vector<std::unique_ptr<Job>> finished;
    {
        const std::lock_guard lock(m_mutex);
        finished.swap(m_finished);
    }
    // A completion may destroy the pool, so nothing here touches a member any more.
    for (auto& job : finished) {
        if (job->completion && !job->stop->stop_requested())
            job->completion();
        job.reset();
    }
}

PoolExecutor::PoolExecutor(int threads)
    : m_pool(std::make_unique<Pool>(threads))
{
}

PoolExecutor::~PoolExecutor() = default;

Task PoolExecutor::run(Work work)
{
    return Task([stop = m_pool->add(std::move(work))] { stop->request_stop(); });
}

}
