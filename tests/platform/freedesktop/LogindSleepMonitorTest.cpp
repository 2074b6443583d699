// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/LogindSleepMonitor.h"

#include "platform/freedesktop/DbusMock.h"
#include "support/WaitUntil.h"

#include <QDBusArgument>

#include <gtest/gtest.h>

namespace velarin::test {

class LogindSleepMonitorTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(logind.isReady()); }

    void start()
    {
        monitor = std::make_unique<LogindSleepMonitor>(bus.connect());
        monitor->start({ .willSleep =
                             [this](SleepMonitor::SleepDelay newDelay) {
                                 events << QStringLiteral("sleep");
                                 delay = std::move(newDelay);
                             },
            .didWake = [this] { events << QStringLiteral("wake"); } });
        monitor->setShutDownHandler([this] { events << QStringLiteral("shutdown"); });
    }

    // The delay locks that logind counts, by what they delay.
    QString locks()
    {
        const QDBusMessage answer =
            answerTo(desktop, QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.login1"),
                                  QStringLiteral("/org/freedesktop/login1"),
                                  QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("ListInhibitors")));
        QStringList whats;
        const auto list = answer.arguments().value(0).value<QDBusArgument>();
        for (list.beginArray(); !list.atEnd();) {
            QString what, who, why, mode;
            uint user = 0, process = 0;
            list.beginStructure();
            list >> what >> who >> why >> mode >> user >> process;
            list.endStructure();
            whats << what + u':' + who + u':' + mode;
        }
        list.endArray();
        whats.sort();
        return whats.join(u' ');
    }

    [[nodiscard]] bool locksBecome(const QString& expected)
    {
        return waitUntil([&] { return locks() == expected; });
    }

    void prepareFor(const QString& what, bool isComing)
    {
        logind.emitSignal(QStringLiteral("PrepareFor") + what, QStringLiteral("b"), { isComing });
    }

    [[nodiscard]] bool eventsBecome(const QString& expected)
    {
        return waitUntil([&] { return events.join(u',') == expected; });
    }

    const QString both = QStringLiteral("shutdown:Velarin:delay sleep:Velarin:delay");
    const QString shutdownOnly = QStringLiteral("shutdown:Velarin:delay");
    PrivateBus bus;
    QDBusConnection desktop{ bus.connect() };
    DbusMock logind{ bus, QStringLiteral("logind") };
    std::unique_ptr<LogindSleepMonitor> monitor;
    QStringList events;
    SleepMonitor::SleepDelay delay;
};

TEST_F(LogindSleepMonitorTest, sleepAndShutdownAreDelayedFromTheStart)
{
    start();
    EXPECT_TRUE(locksBecome(both));
}

TEST_F(LogindSleepMonitorTest, theSleepWaitsForTheLastCopyOfTheDelay)
{
    start();
    ASSERT_TRUE(locksBecome(both));
    prepareFor(QStringLiteral("Sleep"), true);
    ASSERT_TRUE(eventsBecome(QStringLiteral("sleep")));
    SleepMonitor::SleepDelay copy = delay;
    delay.reset();
    EXPECT_EQ(locks(), both);
    copy.reset();
    EXPECT_TRUE(locksBecome(shutdownOnly));
}

TEST_F(LogindSleepMonitorTest, wakingIsToldAndTheNextSleepIsDelayedAgain)
{
    start();
    ASSERT_TRUE(locksBecome(both));
    for (const char* soFar : { "sleep,wake", "sleep,wake,sleep,wake" }) {
        prepareFor(QStringLiteral("Sleep"), true);
        ASSERT_TRUE(waitUntil([&] { return delay != nullptr; }));
        delay.reset();
        ASSERT_TRUE(locksBecome(shutdownOnly));
        prepareFor(QStringLiteral("Sleep"), false);
        ASSERT_TRUE(eventsBecome(QString::fromLatin1(soFar)));
        EXPECT_TRUE(locksBecome(both));
    }
}

TEST_F(LogindSleepMonitorTest, theSameNewsTwiceIsToldOnce)
{
    start();
    ASSERT_TRUE(locksBecome(both));
    prepareFor(QStringLiteral("Sleep"), false);
    prepareFor(QStringLiteral("Sleep"), true);
    prepareFor(QStringLiteral("Sleep"), true);
    prepareFor(QStringLiteral("Sleep"), false);
    prepareFor(QStringLiteral("Shutdown"), true);
    EXPECT_TRUE(eventsBecome(QStringLiteral("sleep,wake,shutdown")));
}

TEST_F(LogindSleepMonitorTest, theShutdownWaitsUntilTheMonitorIsGone)
{
    start();
    ASSERT_TRUE(locksBecome(both));
    prepareFor(QStringLiteral("Shutdown"), true);
    ASSERT_TRUE(eventsBecome(QStringLiteral("shutdown")));
    EXPECT_EQ(locks(), both);
    monitor.reset();
    EXPECT_TRUE(locksBecome(QString()));
}

TEST_F(LogindSleepMonitorTest, aSleepBeforeTheLockWasGivenIsToldAllTheSame)
{
    // A logind that never answers the request for a lock.
    PrivateBus otherBus;
    DbusMock silent(otherBus, QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"));
    ASSERT_TRUE(silent.isReady());
    LogindSleepMonitor unlocked(otherBus.connect());
    bool hasSlept = false;
    unlocked.start(
        { .willSleep = [&](const SleepMonitor::SleepDelay& given) { hasSlept = given != nullptr; }, .didWake = {} });
    silent.emitSignal(QStringLiteral("PrepareForSleep"), QStringLiteral("b"), { true });
    EXPECT_TRUE(waitUntil([&] { return hasSlept; }));
}

TEST_F(LogindSleepMonitorTest, aSleepToldByAnybodyElseIsNotBelieved)
{
    start();
    ASSERT_TRUE(locksBecome(both));
    auto forged = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForShutdown"));
    forged << true;
    desktop.send(forged);
    prepareFor(QStringLiteral("Sleep"), true);
    EXPECT_TRUE(eventsBecome(QStringLiteral("sleep")));
}

TEST(LogindSleepMonitorWithoutLogindTest, nothingIsToldAndNothingFails)
{
    PrivateBus bus;
    LogindSleepMonitor withoutLogind(bus.connect());
    withoutLogind.start({});
    LogindSleepMonitor withoutBus(QDBusConnection(QStringLiteral("none")));
    withoutBus.start({});
    // The refusal of the locks arrives before the answer to this later question.
    const QVariant nothing = propertyOf(
        bus.connect(), QStringLiteral("org.freedesktop.login1"), QStringLiteral("/"), QStringLiteral("a.b"), {});
    EXPECT_FALSE(nothing.isValid());
}

}
