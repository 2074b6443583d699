// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/SleepMonitor.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>

namespace velarin {

// Sleep, waking and shutting down as logind tells them (org.freedesktop.login1, "Inhibitor Locks"). Main thread only.
//
// 1. start() listens and takes two delay locks, one on sleep and one on shutdown.
// 2. Before a sleep the sleep lock goes to the handler: the machine sleeps when the handler's last copy is gone.
// 3. After waking didWake() is told and a new sleep lock is taken.
// 4. The shutdown lock lives as long as this object, so that the quit that the shut-down handler starts can finish.
//
// No call waits for an answer. Where a lock could not be had, the events are told all the same, and nothing is delayed.
class LogindSleepMonitor final : public QObject, public SleepMonitor
{
    Q_OBJECT

public:
    // The system bus, or on a machine without one a connection that is not connected.
    explicit LogindSleepMonitor(const QDBusConnection& systemBus);

    void start(Handlers handlers) override;
    void setShutDownHandler(std::function<void()> willShutDown) override { m_willShutDown = std::move(willShutDown); }

private Q_SLOTS:
    void prepareForSleep(bool isComing);
    void prepareForShutdown(bool isComing);

private:
    void listen(const QString& signal, const char* slot);
    void goToSleep();
    void wake();
    void takeSleepLock();
    void takeLock(const QString& what, const QString& why, std::function<void(SleepDelay)> taken);

    QDBusConnection m_bus;
    Handlers m_handlers;
    std::function<void()> m_willShutDown;
    bool m_isAsleep{ false };
    bool m_isShuttingDown{ false };
    // Null until logind has answered, and while the machine sleeps.
    SleepDelay m_sleepLock;
    SleepDelay m_shutdownLock;
};

}
