// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/OrderedWriter.h"

#include "platform/qt/RegularFile.h"

#include <algorithm>
#include <utility>

namespace velarin {

OrderedWriter::OrderedWriter(Executor& executor)
    : m_executor(executor)
{
}

void OrderedWriter::write(const QString& path, Files::Producer produce)
{
    {
        const std::lock_guard lock(m_mutex);
        const auto same = std::find_if(
            m_waiting.begin(), m_waiting.end(), [&path](const Write& write) { return write.path == path; });
        // The overtaken producer ends in `produce`, and dies with it outside the lock.
        if (same != m_waiting.end())
            same->produce.swap(produce);
        else
            m_waiting.push_back({ path, std::exchange(produce, {}) });
    }
    runOn(
        m_executor, [this] { writeWhatWaits(); }, [] {})
        .release();
}

void OrderedWriter::keepUnreadable(const QString& path)
{
    const std::lock_guard lock(m_mutex);
    m_unreadable.insert(path);
}

void OrderedWriter::flush()
{
    std::unique_lock lock(m_mutex);
    // Every write has a turn on the executor, and a thread that is still writing takes what waits for its path as well.
    m_idle.wait(lock, [this] { return m_waiting.empty() && m_underWay.isEmpty(); });
}

void OrderedWriter::writeWhatWaits()
{
    Write next;
    while (takeNext(next))
        finished(next, perform(next));
}

bool OrderedWriter::takeNext(Write& next)
{
    const std::lock_guard lock(m_mutex);
    const auto free = std::find_if(
        m_waiting.begin(), m_waiting.end(), [this](const Write& write) { return !m_underWay.contains(write.path); });
    if (free == m_waiting.end())
        return false;
    next = std::move(*free);
    m_waiting.erase(free);
    next.keepUnreadable = m_unreadable.contains(next.path);
    m_underWay.insert(next.path);
    return true;
}

bool OrderedWriter::perform(const Write& write)
{
    const QByteArray content = write.produce();
    if (write.keepUnreadable && !setAsideUnreadable(write.path))
        return false;
    return replaceRegularFile(write.path, content);
}

void OrderedWriter::finished(const Write& write, bool written)
{
    {
        const std::lock_guard lock(m_mutex);
        m_underWay.remove(write.path);
        if (written && write.keepUnreadable)
            m_unreadable.remove(write.path);
    }
    m_idle.notify_all();
}

}
