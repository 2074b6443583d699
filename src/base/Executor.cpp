// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/Executor.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QThreadPool>

namespace velarin {

PoolExecutor::PoolExecutor(int threads)
    : m_pool(std::make_unique<QThreadPool>())
{
    m_pool->setMaxThreadCount(threads);
}

PoolExecutor::~PoolExecutor()
{
    m_pool->waitForDone();
}

Task PoolExecutor::run(Work work)
{
    // The stop source is the guard of the queued return: the task's owner stops it on the main thread, where the
    // completion looks at it.
    auto stop = std::make_shared<std::stop_source>();
    m_pool->start([work = std::move(work), stop] {
        if (stop->stop_requested())
            return;
        Completion completion = work(stop->get_token());
        if (!completion || !qApp)
            return;
        QMetaObject::invokeMethod(
            qApp,
            [completion = std::move(completion), stop] {
                if (!stop->stop_requested())
                    completion();
            },
            Qt::QueuedConnection);
    });
    return Task([stop] { stop->request_stop(); });
}

}
