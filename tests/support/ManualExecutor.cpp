// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ManualExecutor.h"

namespace velarin::test {

Task ManualExecutor::run(Work work)
{
    auto job = std::make_shared<Job>();
    job->work = std::move(work);
    m_jobs.push_back(job);
    return Task([job] { job->stop.request_stop(); });
}

void ManualExecutor::runAll()
{
    while (!m_jobs.empty()) {
        const auto job = m_jobs.front();
        m_jobs.pop_front();
        if (job->stop.stop_requested())
            continue;
        const Completion completion = job->work(job->stop.get_token());
        if (completion && !job->stop.stop_requested())
            completion();
    }
}

}
