// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Executor.h"

#include <deque>
#include <memory>

namespace velarin::test {

// Work waits until the test says so, then runs in the order in which it was asked for.
class ManualExecutor final : public Executor
{
public:
    Task run(Work work) override;

    // Runs what is waiting, and what that asks for in turn.
    void runAll();
    [[nodiscard]] std::size_t waiting() const { return m_jobs.size(); }

private:
    struct Job
    {
        Work work;
        std::stop_source stop;
    };
    std::deque<std::shared_ptr<Job>> m_jobs;
};

}
