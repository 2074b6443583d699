// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Task.h"

#include <functional>
#include <memory>
#include <stop_token>
#include <type_traits>
#include <utility>

namespace velarin {

// Where work off the main thread goes. Logic takes an Executor, so that a test decides when the work is done.
class Executor
{
public:
    // What the work leaves for the main thread; empty when nothing is left to do there.
    using Completion = std::function<void()>;
    // Runs off the main thread, on values that it owns. The token tells that nobody waits for the result any more.
    using Work = std::function<Completion(std::stop_token)>;

    virtual ~Executor() = default;

    // Called on the main thread. The completion runs on the main thread, in a later turn of its loop, unless the
    // task was cancelled before. What `work` and the completion captured is destroyed on the main thread too.
    [[nodiscard]] virtual Task run(Work work) = 0;
};

// A few threads of our own, so that a blocked global pool cannot hold up the program. Work starts in the order in which
// it was asked for. Made and destroyed on the main thread.
class PoolExecutor final : public Executor
{
public:
    explicit PoolExecutor(int threads);
    // Asks the work under way to stop and waits for it. Work that has not begun and completions that have not run yet
    // never will.
    ~PoolExecutor() override;

    Task run(Work work) override;

private:
    class Pool;
    std::unique_ptr<Pool> m_pool;
};

// The one way to the pool: `work` is called off the main thread, with a std::stop_token if it takes one, and `done`
// gets its result on the main thread. `done` is neither called after the task was cancelled nor from inside this call.
template<typename WorkFunction, typename Done>
[[nodiscard]] Task runOn(Executor& executor, WorkFunction work, Done done)
{
    auto invoke = [](WorkFunction& function, std::stop_token token) {
        if constexpr (std::is_invocable_v<WorkFunction&, std::stop_token>)
            return function(std::move(token));
        else
            return function();
    };
    using Result = decltype(invoke(work, std::stop_token{}));
    // Shared, not moved into the completion: a copy that died with the work would die off the main thread.
    auto finish = std::make_shared<Done>(std::move(done));
    return executor.run(
        [work = std::move(work), finish, invoke](std::stop_token token) mutable -> Executor::Completion {
            if constexpr (std::is_void_v<Result>) {
                invoke(work, std::move(token));
                return [finish] { (*finish)(); };
            } else {
                auto result = std::make_shared<Result>(invoke(work, std::move(token)));
                return [finish, result] { (*finish)(std::move(*result)); };
            }
        });
}

}
