// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Executor.h"
#include "platform/Files.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <condition_variable>
#include <mutex>
#include <vector>

namespace velarin {

// Writes files in the background, each path in order: a path is written by one thread at a time, and while one write is
// under way only the latest of those that wait for it is kept. Different paths do not wait for each other as long as
// the executor has a thread to spare. Called on the main thread; it must outlive the executor's work.
class OrderedWriter
{
public:
    explicit OrderedWriter(Executor& executor);

    void write(const QString& path, Files::Producer produce);
    // Before the next write of the path, what stands there is kept beside. If that fails, it is not overwritten.
    void keepUnreadable(const QString& path);
    // Waits until everything asked for is written.
    void flush();

private:
    struct Write
    {
        QString path;
        Files::Producer produce;
        bool keepUnreadable{ false };
    };

    void writeWhatWaits();
    bool takeNext(Write& next);
    static bool perform(const Write& write);
    void finished(const Write& write, bool written);

    Executor& m_executor;

    // Protected by m_mutex.
    std::vector<Write> m_waiting;
    QSet<QString> m_underWay;
    QSet<QString> m_unreadable;

    std::mutex m_mutex;
    std::condition_variable_any m_idle;
};

}
