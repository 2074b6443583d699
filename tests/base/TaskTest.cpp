// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/Task.h"

#include <gmock/gmock.h>

#include <memory>
#include <utility>

namespace velarin {

namespace {

Task counting(int& cancellations)
{
    return Task([&cancellations] { ++cancellations; });
}

// Owns a task whose cancellation owns it in turn.
struct Owner
{
    Task task;
};

TEST(TaskTest, anEmptyHandleIsFalseAndCancelsNothing)
{
    Task task;
    EXPECT_FALSE(task);
    task.cancel();
    task.release();
    EXPECT_FALSE(task);
}

TEST(TaskTest, destroyingTheHandleCancelsTheWork)
{
    int cancellations = 0;
    {
        const Task task = counting(cancellations);
        EXPECT_TRUE(task);
    }
    EXPECT_EQ(cancellations, 1);
}

TEST(TaskTest, replacingTheHandleCancelsTheFormerWorkAlone)
{
    int first = 0;
    int second = 0;
    Task task = counting(first);
    task = counting(second);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 0);
    EXPECT_TRUE(task);
}

TEST(TaskTest, assigningAnEmptyHandleCancels)
{
    int cancellations = 0;
    Task task = counting(cancellations);
    task = {};
    EXPECT_EQ(cancellations, 1);
    EXPECT_FALSE(task);
}

TEST(TaskTest, cancellingTwiceCancelsOnce)
{
    int cancellations = 0;
    {
        Task task = counting(cancellations);
        task.cancel();
        task.cancel();
    }
    EXPECT_EQ(cancellations, 1);
}

TEST(TaskTest, aReleasedTaskIsNeverCancelled)
{
    int cancellations = 0;
    {
        Task task = counting(cancellations);
        task.release();
        EXPECT_FALSE(task);
    }
    EXPECT_EQ(cancellations, 0);
}

TEST(TaskTest, movingHandsTheWorkOver)
{
    int cancellations = 0;
    Task from = counting(cancellations);
    Task to = std::move(from);
    from.cancel(); // NOLINT(bugprone-use-after-move): an empty handle is what is claimed.
    EXPECT_EQ(cancellations, 0);
    EXPECT_TRUE(to);
    to.cancel();
    EXPECT_EQ(cancellations, 1);
}

TEST(TaskTest, assigningAHandleToItselfKeepsTheWork)
{
    int cancellations = 0;
    Task task = counting(cancellations);
    Task& same = task;
    task = std::move(same);
    EXPECT_EQ(cancellations, 0);
    EXPECT_TRUE(task);
}

TEST(TaskTest, theNewWorkStandsInTheSlotWhenTheFormerOneIsCancelled)
{
    bool replaced = false;
    int cancellations = 0;
    Task task;
    task = Task([&] { replaced = static_cast<bool>(task); });
    task = counting(cancellations);
    EXPECT_TRUE(replaced);
}

TEST(TaskTest, theHandleMayBeDestroyedInsideItsOwnCancellation)
{
    auto owner = std::make_unique<Owner>();
    owner->task = Task([&owner] { owner.reset(); });
    owner->task.cancel();
    EXPECT_EQ(owner, nullptr);
}

TEST(TaskTest, theHandleMayBeDestroyedWhileItIsReplaced)
{
    auto owner = std::make_unique<Owner>();
    int cancellations = 0;
    owner->task = Task([&owner] { owner.reset(); });
    owner->task = counting(cancellations);
    EXPECT_EQ(owner, nullptr);
    EXPECT_EQ(cancellations, 1);
}

TEST(TaskTest, releasingMayDestroyTheOwnerOfTheHandle)
{
    auto owner = std::make_shared<Owner>();
    const std::weak_ptr<Owner> watched = owner;
    Owner* plain = owner.get();
    plain->task = Task([owner = std::move(owner)] {});
    plain->task.release();
    EXPECT_TRUE(watched.expired());
}

}

}
