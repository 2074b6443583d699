// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/LogindSleepMonitor.h"

#include "platform/freedesktop/FreedesktopLog.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>

namespace velarin {

namespace {

const QString logindService = QStringLiteral("org.freedesktop.login1");
const QString managerPath = QStringLiteral("/org/freedesktop/login1");
const QString managerInterface = QStringLiteral("org.freedesktop.login1.Manager");

}

LogindSleepMonitor::LogindSleepMonitor(const QDBusConnection& systemBus)
    : m_bus(systemBus)
{
}

void LogindSleepMonitor::start(Handlers handlers)
{
    m_handlers = std::move(handlers);
    if (!m_bus.isConnected()) {
        qCInfo(desktopLog) << "no system bus: sleep and shutdown are not told";
        return;
    }
    listen(QStringLiteral("PrepareForSleep"), SLOT(prepareForSleep(bool)));
    listen(QStringLiteral("PrepareForShutdown"), SLOT(prepareForShutdown(bool)));
    takeSleepLock();
    takeLock(QStringLiteral("shutdown"), tr("Salva e chiude"),
        [this](SleepDelay lock) { m_shutdownLock = std::move(lock); });
}

void LogindSleepMonitor::listen(const QString& signal, const char* slot)
{
    // With the service's name, so that only logind is believed: everybody may send a signal on the system bus.
    if (!m_bus.connect(logindService, managerPath, managerInterface, signal, this, slot))
        qCWarning(desktopLog) << "cannot listen to" << signal;
}

void LogindSleepMonitor::prepareForSleep(bool isComing)
{
    if (isComing == m_isAsleep)
        return;
    m_isAsleep = isComing;
    if (isComing)
        goToSleep();
    else
        wake();
}

void LogindSleepMonitor::goToSleep()
{
    SleepDelay delay = std::exchange(m_sleepLock, nullptr);
    if (!delay)
        delay = std::make_shared<QDBusUnixFileDescriptor>();
    if (m_handlers.willSleep)
        m_handlers.willSleep(std::move(delay));
}

void LogindSleepMonitor::wake()
{
    takeSleepLock();
    if (m_handlers.didWake)
        m_handlers.didWake();
}

void LogindSleepMonitor::prepareForShutdown(bool isComing)
{
    if (isComing == m_isShuttingDown)
        return;
    m_isShuttingDown = isComing;
    if (isComing && m_willShutDown)
        m_willShutDown();
}

void LogindSleepMonitor::takeSleepLock()
{
    takeLock(QStringLiteral("sleep"), tr("Mette in pausa la riproduzione"), [this](SleepDelay lock) {
        // An answer that comes after the sleep was told holds up a sleep that nobody would let go.
        if (!m_isAsleep)
            m_sleepLock = std::move(lock);
    });
}

void LogindSleepMonitor::takeLock(const QString& what, const QString& why, std::function<void(SleepDelay)> taken)
{
    auto call = QDBusMessage::createMethodCall(logindService, managerPath, managerInterface, QStringLiteral("Inhibit"));
    call << what << QStringLiteral("Velarin") << why << QStringLiteral("delay");
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, what, taken = std::move(taken)] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusUnixFileDescriptor> reply = *watcher;
        if (reply.isError()) {
            qCInfo(desktopLog) << "no delay of" << what << "from logind:" << reply.error().message();
            return;
        }
        taken(std::make_shared<QDBusUnixFileDescriptor>(reply.value()));
    });
}

}
