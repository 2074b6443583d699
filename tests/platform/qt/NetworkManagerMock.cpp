// SPDX-License-Identifier: GPL-3.0-or-later
#include "NetworkManagerMock.h"

#include "support/WaitUntil.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QProcessEnvironment>

#include <gmock/gmock.h>

#include <signal.h>

namespace velarin::test {

namespace {

const QString service = QStringLiteral("org.freedesktop.NetworkManager");
const QString path = QStringLiteral("/org/freedesktop/NetworkManager");

}

NetworkManagerMock::NetworkManagerMock()
{
    m_bus.start(QStringLiteral("dbus-daemon"),
        { QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address") });
    if (m_bus.waitForReadyRead())
        m_address = QString::fromUtf8(m_bus.readLine()).trimmed();
}

NetworkManagerMock::~NetworkManagerMock()
{
    stopManager();
    for (int number = 1; number <= m_connections; ++number)
        QDBusConnection::disconnectFromBus(QString::number(number));
    m_bus.kill();
    m_bus.waitForFinished();
}

QDBusConnection NetworkManagerMock::connection()
{
    return QDBusConnection::connectToBus(m_address, QString::number(++m_connections));
}

void NetworkManagerMock::startManager(State state)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), m_address);
    m_manager.setProcessEnvironment(environment);
    m_manager.start(QStringLiteral("/usr/bin/python3"),
        { QStringLiteral("-m"), QStringLiteral("dbusmock"), QStringLiteral("--system"), QStringLiteral("--template"),
            QStringLiteral("networkmanager"), QStringLiteral("--parameters"),
            QStringLiteral(R"({"State": %1})").arg(uint(state)) });
    const QDBusConnection bus = connection();
    ASSERT_TRUE(waitUntil([&bus] { return bus.interface()->isServiceRegistered(service).value(); }));
}

void NetworkManagerMock::stopManager()
{
    m_manager.kill();
    m_manager.waitForFinished();
}

void NetworkManagerMock::setState(State state)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Mock"), QStringLiteral("SetGlobalConnectionState"));
    message.setArguments({ QVariant::fromValue(uint(state)) });
    const QDBusMessage answer = connection().call(message);
    ASSERT_EQ(answer.type(), QDBusMessage::ReplyMessage) << qPrintable(answer.errorMessage());
}

void NetworkManagerMock::freezeManager()
{
    ::kill(static_cast<pid_t>(m_manager.processId()), SIGSTOP);
}

}
