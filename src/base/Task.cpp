// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/Task.h"

#include <utility>

namespace velarin {

Task::Task(std::function<void()> cancel)
    : m_cancel(std::move(cancel))
{
}

Task::Task(Task&& other) noexcept
    : m_cancel(std::exchange(other.m_cancel, {}))
{
}

Task& Task::operator=(Task&& other) noexcept
{
    if (this != &other) {
        cancel();
        m_cancel = std::exchange(other.m_cancel, {});
    }
    return *this;
}

Task::~Task()
{
    cancel();
}

void Task::cancel()
{
    // Emptied before the call: what the work captured may own the object that owns this handle.
    if (auto cancelWork = std::exchange(m_cancel, {}))
        cancelWork();
}

void Task::release()
{
    m_cancel = {};
}

}
