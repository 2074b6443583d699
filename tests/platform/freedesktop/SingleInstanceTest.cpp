// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/SingleInstance.h"

#include "platform/freedesktop/PrivateBus.h"
#include "support/WaitUntil.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QElapsedTimer>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>

namespace velarin::test {

namespace {

using namespace std::chrono_literals;

const QString first = QStringLiteral("first");
const QString second = QStringLiteral("second");

}

class SingleInstanceTest : public testing::Test
{
protected:
    std::unique_ptr<Child> start(const QStringList& addresses = {}, const QString& token = {})
    {
        QProcessEnvironment environment = bus.environment();
        environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), token);
        environment.remove(QStringLiteral("DESKTOP_STARTUP_ID"));
        return startIn(environment, addresses);
    }

    std::unique_ptr<Child> startWithoutBus()
    {
        QProcessEnvironment environment = bus.environment();
        environment.remove(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
        return startIn(environment, {});
    }

    std::unique_ptr<Child> startIn(const QProcessEnvironment& environment, const QStringList& addresses)
    {
        return std::make_unique<Child>(QStringLiteral(VELARIN_PROBE),
            QStringList{ QStringLiteral("instance"), lockPath } + addresses, environment);
    }

    static void expectSecond(Child& child)
    {
        EXPECT_EQ(child.exitCode(), 0);
        EXPECT_TRUE(child.output().contains(second));
    }

    QDBusMessage callFirst(const QString& method, const QVariantList& arguments)
    {
        auto call = QDBusMessage::createMethodCall(QStringLiteral("com.brenholt.velarin"),
            QStringLiteral("/com/brenholt/velarin"), QStringLiteral("org.freedesktop.Application"), method);
        call.setArguments(arguments);
        return answerTo(desktop, call);
    }

    PrivateBus bus;
    QDBusConnection desktop{ bus.connect() };
    QString lockPath{ bus.folder() + QStringLiteral("/data/Velarin/instance.lock") };
};

TEST_F(SingleInstanceTest, aSecondStartRaisesTheFirstWithItsTokenAndEndsWithZero)
{
    const auto running = start();
    ASSERT_EQ(running->line(first), first);
    const auto later = start({}, QStringLiteral("tok123"));
    expectSecond(*later);
    EXPECT_EQ(running->line(QStringLiteral("activated")), QStringLiteral("activated [tok123]"));
    EXPECT_TRUE(running->isRunning());
}

TEST_F(SingleInstanceTest, aSecondStartHandsItsAddressesOver)
{
    const auto running = start();
    ASSERT_EQ(running->line(first), first);
    expectSecond(*start({ QStringLiteral("http://a/"), QStringLiteral("http://b/") }));
    EXPECT_EQ(running->line(QStringLiteral("opened")), QStringLiteral("opened http://a/ http://b/ []"));
}

TEST_F(SingleInstanceTest, ofSeveralStartsAtOnceOneIsTheFirst)
{
    std::vector<std::unique_ptr<Child>> starts;
    for (int i = 0; i < 6; ++i)
        starts.push_back(start());
    auto isDecided = [](const auto& child) { return !child->isRunning() || child->output().contains(first); };
    ASSERT_TRUE(waitUntil([&] { return std::ranges::all_of(starts, isDecided); }));
    EXPECT_EQ(std::ranges::count_if(starts, [](const auto& child) { return child->isRunning(); }), 1);
}

TEST_F(SingleInstanceTest, aFirstRunThatHangsHoldsTheSecondUpForTwoSecondsAtMost)
{
    const auto running = start();
    ASSERT_EQ(running->line(first), first);
    running->signal(SIGSTOP);
    QElapsedTimer timer;
    timer.start();
    expectSecond(*start());
    EXPECT_LT(timer.elapsed(), 3000);
}

TEST_F(SingleInstanceTest, afterTheFirstWasKilledTheNextStartIsTheFirst)
{
    const auto running = start();
    ASSERT_EQ(running->line(first), first);
    running->signal(SIGKILL);
    ASSERT_EQ(running->exitCode(), -1);
    EXPECT_EQ(start()->line(first), first);
}

TEST_F(SingleInstanceTest, aFormerRunThatIsStillEndingIsWaitedFor)
{
    auto former = std::make_unique<InstanceLock>(lockPath);
    ASSERT_TRUE(former->take(0ms));
    QTimer::singleShot(300ms, qApp, [&] { former.reset(); });
    EXPECT_EQ(start()->line(first), first);
}

TEST_F(SingleInstanceTest, theFilesOfARunOnAnotherBusAreKeptOffAndTheNameIsGivenBack)
{
    InstanceLock other(lockPath);
    ASSERT_TRUE(other.take(0ms));
    expectSecond(*start());
    EXPECT_FALSE(desktop.interface()->isServiceRegistered(QStringLiteral("com.brenholt.velarin")).value());
}

TEST_F(SingleInstanceTest, withoutABusTheLockDecidesAndTheSecondSaysSoAndEndsWithZero)
{
    const auto running = startWithoutBus();
    ASSERT_EQ(running->line(first), first);
    const auto later = startWithoutBus();
    expectSecond(*later);
    EXPECT_TRUE(later->output().contains(QStringLiteral("another run holds the lock")));
    EXPECT_FALSE(running->output().contains(QStringLiteral("activated")));
}

TEST_F(SingleInstanceTest, withoutABusALockOutlivesNoProcess)
{
    const auto running = startWithoutBus();
    ASSERT_EQ(running->line(first), first);
    running->signal(SIGKILL);
    ASSERT_EQ(running->exitCode(), -1);
    EXPECT_EQ(startWithoutBus()->line(first), first);
}

TEST_F(SingleInstanceTest, aLauncherActivatesTheRunningProgram)
{
    const auto running = start();
    ASSERT_EQ(running->line(first), first);
    const QVariantMap oldToken{ { QStringLiteral("desktop-startup-id"), QStringLiteral("old_TIME1") } };
    EXPECT_EQ(callFirst(QStringLiteral("Activate"), { oldToken }).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(running->line(QStringLiteral("activated")), QStringLiteral("activated [old_TIME1]"));
    const QVariantList action{ QStringLiteral("any"), QVariantList(), QVariantMap() };
    EXPECT_EQ(callFirst(QStringLiteral("ActivateAction"), action).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(running->line(QStringLiteral("activated []")), QStringLiteral("activated []"));
}

TEST(InstanceLockTest, whereNoFileCanBeMadeNobodyIsLockedOut)
{
    EXPECT_TRUE(InstanceLock(QStringLiteral("/proc/nowhere/instance.lock")).take(0ms));
}

}
