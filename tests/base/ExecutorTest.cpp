// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/Executor.h"

#include "support/WaitUntil.h"

#include <QCoreApplication>
#include <QThread>

#include <gmock/gmock.h>

#include <atomic>
#include <future>
#include <memory>
#include <vector>

namespace velarin {

namespace {

using test::waitUntil;

// Says on which thread it died.
struct Tracer
{
    explicit Tracer(QThread** where)
        : diedOn(where)
    {
    }
    Tracer(const Tracer&) = delete;
    Tracer& operator=(const Tracer&) = delete;
    ~Tracer() { *diedOn = QThread::currentThread(); }

    QThread** diedOn;
};

class ExecutorTest : public testing::Test
{
protected:
    // Holds a thread of the pool until the gate opens.
    auto waitingAtTheGate()
    {
        return [gate = gateOpens, begun = hasBegun] {
            begun->store(true);
            gate.wait();
        };
    }
    void open() { gatePromise.set_value(); }
    // Runs something through the one thread of the pool, so that whatever was asked for before is through as well.
    void passThrough()
    {
        bool passed = false;
        const Task task = runOn(
            *pool, [] {}, [&passed] { passed = true; });
        ASSERT_TRUE(waitUntil([&passed] { return passed; }));
    }

    std::promise<void> gatePromise;
    std::shared_future<void> gateOpens{ gatePromise.get_future() };
    std::shared_ptr<std::atomic<bool>> hasBegun{ std::make_shared<std::atomic<bool>>(false) };
    std::unique_ptr<PoolExecutor> pool{ std::make_unique<PoolExecutor>(1) };
};

TEST_F(ExecutorTest, workRunsOffTheMainThreadAndItsResultComesHome)
{
    QThread* workedOn = nullptr;
    QThread* doneOn = nullptr;
    int result = 0;
    const Task task = runOn(
        *pool,
        [&workedOn] {
            workedOn = QThread::currentThread();
            return 42;
        },
        [&](int value) {
            doneOn = QThread::currentThread();
            result = value;
        });
    ASSERT_TRUE(waitUntil([&result] { return result != 0; }));
    EXPECT_EQ(result, 42);
    EXPECT_NE(workedOn, QThread::currentThread());
    EXPECT_EQ(doneOn, QThread::currentThread());
}

TEST_F(ExecutorTest, aResultThatCannotBeCopiedIsMoved)
{
    std::unique_ptr<int> result;
    const Task task = runOn(
        *pool, [] { return std::make_unique<int>(7); }, [&](std::unique_ptr<int> value) { result = std::move(value); });
    ASSERT_TRUE(waitUntil([&result] { return result != nullptr; }));
    EXPECT_EQ(*result, 7);
}

TEST_F(ExecutorTest, theCompletionNeverRunsInsideTheCallThatAskedForIt)
{
    bool done = false;
    const Task task = runOn(
        *pool, [] {}, [&done] { done = true; });
    QThread::msleep(20);
    EXPECT_FALSE(done);
    EXPECT_TRUE(waitUntil([&done] { return done; }));
}

TEST_F(ExecutorTest, oneThreadKeepsTheOrder)
{
    std::vector<int> order;
    std::vector<Task> tasks;
    for (int number = 0; number < 50; ++number)
        tasks.push_back(runOn(
            *pool, [number] { return number; }, [&order](int value) { order.push_back(value); }));
    ASSERT_TRUE(waitUntil([&order] { return order.size() == 50; }));
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST_F(ExecutorTest, workThatWasCancelledBeforeItBeganNeverRuns)
{
    const Task blocker = runOn(*pool, waitingAtTheGate(), [] {});
    std::atomic<bool> ran = false;
    bool done = false;
    Task task = runOn(
        *pool, [&ran] { ran = true; }, [&done] { done = true; });
    task.cancel();
    open();
    passThrough();
    EXPECT_FALSE(ran);
    EXPECT_FALSE(done);
}

TEST_F(ExecutorTest, workThatIsUnderWayHearsThatItWasCancelledAndIsNotAnswered)
{
    std::atomic<bool> stopped = false;
    bool done = false;
    Task task = runOn(
        *pool,
        [&stopped, begun = hasBegun](std::stop_token token) {
            begun->store(true);
            while (!token.stop_requested())
                std::this_thread::yield();
            stopped = true;
        },
        [&done] { done = true; });
    ASSERT_TRUE(waitUntil([this] { return hasBegun->load(); }));
    task.cancel();
    passThrough();
    EXPECT_TRUE(stopped);
    EXPECT_FALSE(done);
}

TEST_F(ExecutorTest, aResultOnItsWayHomeIsDroppedWhenTheTaskIsCancelled)
{
    std::atomic<bool> worked = false;
    bool done = false;
    Task task = runOn(
        *pool, [&worked] { worked = true; }, [&done] { done = true; });
    while (!worked)
        QThread::yieldCurrentThread();
    task.cancel();
    passThrough();
    EXPECT_FALSE(done);
}

TEST_F(ExecutorTest, anOwnerThatIsDestroyedIsNeverCalled)
{
    struct Owner
    {
        int answers{ 0 };
        Task task;
    };
    auto owner = std::make_unique<Owner>();
    owner->task = runOn(*pool, waitingAtTheGate(), [plain = owner.get()] { ++plain->answers; });
    ASSERT_TRUE(waitUntil([this] { return hasBegun->load(); }));
    owner.reset();
    open();
    // Under AddressSanitizer an answer to the dead owner would end the program.
    passThrough();
    SUCCEED();
}

TEST_F(ExecutorTest, aReleasedTaskIsAnswered)
{
    bool done = false;
    runOn(
        *pool, [] {}, [&done] { done = true; })
        .release();
    EXPECT_TRUE(waitUntil([&done] { return done; }));
}

TEST_F(ExecutorTest, anOwnerMayBeDestroyedByItsOwnAnswer)
{
    struct Owner
    {
        Task task;
    };
    auto owner = std::make_unique<Owner>();
    owner->task = runOn(
        *pool, [] {}, [&owner] { owner.reset(); });
    EXPECT_TRUE(waitUntil([&owner] { return owner == nullptr; }));
}

TEST_F(ExecutorTest, destroyingTheExecutorStopsTheWorkUnderWayAndDropsTheRest)
{
    std::atomic<bool> stopped = false;
    std::atomic<bool> secondRan = false;
    bool done = false;
    const Task underWay = runOn(
        *pool,
        [&stopped, begun = hasBegun](std::stop_token token) {
            begun->store(true);
            while (!token.stop_requested())
                std::this_thread::yield();
            stopped = true;
        },
        [&done] { done = true; });
    const Task waiting = runOn(
        *pool, [&secondRan] { secondRan = true; }, [&done] { done = true; });
    ASSERT_TRUE(waitUntil([this] { return hasBegun->load(); }));
    pool.reset();
    EXPECT_TRUE(stopped);
    QCoreApplication::processEvents();
    EXPECT_FALSE(secondRan);
    EXPECT_FALSE(done);
}

TEST_F(ExecutorTest, aCompletionThatHasNotRunDiesWithTheExecutor)
{
    std::atomic<bool> worked = false;
    bool done = false;
    runOn(
        *pool, [&worked] { worked = true; }, [&done] { done = true; })
        .release();
    while (!worked)
        QThread::yieldCurrentThread();
    pool.reset();
    QCoreApplication::processEvents();
    EXPECT_FALSE(done);
}

TEST_F(ExecutorTest, aTaskMayOutliveItsExecutor)
{
    Task task = runOn(
        *pool, [] {}, [] {});
    pool.reset();
    task.cancel();
    EXPECT_FALSE(task);
}

TEST_F(ExecutorTest, aCompletionMayDestroyTheExecutor)
{
    int done = 0;
    const Task first = runOn(
        *pool, [] {},
        [&] {
            ++done;
            pool.reset();
        });
    EXPECT_TRUE(waitUntil([&done] { return done == 1; }));
    EXPECT_EQ(pool, nullptr);
}

TEST_F(ExecutorTest, whatWorkAndAnswerCapturedDiesOnTheMainThread)
{
    QThread* workDiedOn = nullptr;
    QThread* answerDiedOn = nullptr;
    Task task = runOn(
        *pool, [tracer = std::make_shared<Tracer>(&workDiedOn)] {},
        [tracer = std::make_shared<Tracer>(&answerDiedOn)] {});
    task.cancel();
    ASSERT_TRUE(waitUntil([&] { return workDiedOn != nullptr && answerDiedOn != nullptr; }));
    EXPECT_EQ(workDiedOn, QThread::currentThread());
    EXPECT_EQ(answerDiedOn, QThread::currentThread());
}

TEST_F(ExecutorTest, aPoolOfTwoWorksOnWhileOneThreadIsHeldUp)
{
    pool = std::make_unique<PoolExecutor>(2);
    const Task blocker = runOn(*pool, waitingAtTheGate(), [] {});
    ASSERT_TRUE(waitUntil([this] { return hasBegun->load(); }));
    passThrough();
    open();
}

TEST_F(ExecutorTest, aThousandPiecesOfWorkHalfOfThemCancelledAnswerFiveHundredTimes)
{
    pool = std::make_unique<PoolExecutor>(3);
    int answers = 0;
    std::vector<Task> tasks;
    for (int number = 0; number < 1000; ++number)
        tasks.push_back(runOn(
            *pool, [text = QString::number(number)] { return text; },
            [&answers](const QString& text) { answers += text.isEmpty() ? 0 : 1; }));
    for (std::size_t number = 0; number < tasks.size(); number += 2)
        tasks[number].cancel();
    ASSERT_TRUE(waitUntil([&answers] { return answers == 500; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(answers, 500);
}

}

}
