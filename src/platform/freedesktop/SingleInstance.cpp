// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/SingleInstance.h"

#include "platform/freedesktop/ApplicationAdaptor.h"
#include "platform/freedesktop/FreedesktopLog.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace velarin {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds longestWait = 2s;

const QString applicationId = QStringLiteral("com.brenholt.velarin");
const QString applicationPath = QStringLiteral("/com/brenholt/velarin");
const QString applicationInterface = QStringLiteral("org.freedesktop.Application");

}

SingleInstance::SingleInstance(const QDBusConnection& sessionBus, const QString& lockPath, Handlers handlers)
    : m_bus(sessionBus)
    , m_lock(lockPath)
{
    new ApplicationAdaptor(std::move(handlers), this);
}

QString SingleInstance::tokenFromEnvironment()
{
    const QString token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    return token.isEmpty() ? qEnvironmentVariable("DESKTOP_STARTUP_ID") : token;
}

SingleInstance::Outcome SingleInstance::claim(const QStringList& addresses, const QString& token)
{
    if (!m_bus.isConnected())
        return lock(0ms);
    m_bus.registerObject(applicationPath, this, QDBusConnection::ExportAdaptors);
    if (ownsName())
        return lock(longestWait);
    if (handOver(addresses, token))
        return Outcome::Second;
    // The owner hangs, or it has just ended: then the name is free by now.
    return ownsName() ? lock(longestWait) : Outcome::Second;
}

SingleInstance::Outcome SingleInstance::lock(std::chrono::milliseconds patience)
{
    if (m_lock.take(patience))
        return Outcome::First;
    qCInfo(desktopLog) << "another run holds the lock; its window could not be raised from here";
    if (m_bus.isConnected())
        m_bus.unregisterService(applicationId);
    return Outcome::Second;
}

bool SingleInstance::ownsName()
{
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply = m_bus.interface()->registerService(
        applicationId, QDBusConnectionInterface::DontQueueService, QDBusConnectionInterface::DontAllowReplacement);
    return reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered;
}

bool SingleInstance::handOver(const QStringList& addresses, const QString& token)
{
    const QString method = addresses.isEmpty() ? QStringLiteral("Activate") : QStringLiteral("Open");
    auto call = QDBusMessage::createMethodCall(applicationId, applicationPath, applicationInterface, method);
    if (!addresses.isEmpty())
        call << addresses;
    call << platformData(token);
    // An owner that has just ended shall not be started anew by the bus: this start takes its place.
    call.setAutoStartService(false);
    const QDBusMessage answer = m_bus.call(call, QDBus::Block, int(longestWait.count()));
    if (answer.type() != QDBusMessage::ErrorMessage)
        return true;
    qCWarning(desktopLog) << "the first run did not answer:" << answer.errorMessage();
    return false;
}

}
