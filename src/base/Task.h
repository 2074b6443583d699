// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace velarin {

// The handle of one piece of work that will still happen: a timer, a read, a computation on the pool.
//
// Destroying the handle, or assigning another one over it, cancels the work: its continuation will not run. Whoever
// wants the work to run on without a handle calls release(). Cancelling work that has finished does nothing, and a
// handle does not notice that its work is done: it stays non-empty until it is cancelled, released or replaced.
//
// Handles belong to the thread that made them, which is also the thread on which the continuation runs; so after
// cancel() has returned, the continuation can no longer start.
class Task
{
public:
    Task() = default;
    // `cancel` is called at most once.
    explicit Task(std::function<void()> cancel);
    Task(Task&& other) noexcept;
    Task& operator=(Task&& other) noexcept;
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;
    ~Task();

    void cancel();
    void release();

    // Whether the slot holds work that was neither cancelled nor released.
    explicit operator bool() const { return static_cast<bool>(m_cancel); }

private:
    std::function<void()> m_cancel;
};

}
