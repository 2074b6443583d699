// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/Task.h"

#include <utility>

namespace velarin {

// Every function below empties or fills its slot first and calls or drops the old function last: what that captured may
// own the object that owns this handle, so nothing of the handle is touched afterwards.

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
        if (const auto replaced = std::exchange(m_cancel, std::exchange(other.m_cancel, {})))
            replaced();
    }
    return *this;
}

Task::~Task()
{
    cancel();
}

void Task::cancel()
{
    if (const auto cancelled = std::exchange(m_cancel, {}))
        cancelled();
}

void Task::release()
{
    const auto released = std::exchange(m_cancel, {});
}

}
