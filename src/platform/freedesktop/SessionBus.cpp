// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/SessionBus.h"

#include "platform/freedesktop/FreedesktopLog.h"

#include <QDBusError>
#include <QFileInfo>
#include <QStringList>

namespace velarin {

namespace {

QString withoutAutolaunch(const QString& addresses)
{
    QStringList kept = addresses.split(u';', Qt::SkipEmptyParts);
    kept.removeIf([](const QString& address) { return address.startsWith(QStringLiteral("autolaunch:")); });
    return kept.join(u';');
}

// Escaped as the D-Bus specification wants the values of an address.
QString socketAddress(const QString& path)
{
    return QStringLiteral("unix:path=") + QString::fromLatin1(path.toUtf8().toPercentEncoding("-_/.\\*"));
}

}

QString sessionBusAddress(const QProcessEnvironment& environment)
{
    const QString given = withoutAutolaunch(environment.value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS")));
    if (!given.isEmpty())
        return given;
    const QString runtimeFolder = environment.value(QStringLiteral("XDG_RUNTIME_DIR"));
    const QString socket = runtimeFolder + QStringLiteral("/bus");
    return !runtimeFolder.isEmpty() && QFileInfo::exists(socket) ? socketAddress(socket) : QString();
}

QDBusConnection connectToSessionBus(const QProcessEnvironment& environment)
{
    const QString name = QStringLiteral("velarin-session");
    const QString address = sessionBusAddress(environment);
    if (address.isEmpty()) {
        qCInfo(desktopLog) << "no session bus: media controls and desktop settings are left out";
        return QDBusConnection(name);
    }
    QDBusConnection bus = QDBusConnection::connectToBus(address, name);
    if (!bus.isConnected())
        qCWarning(desktopLog) << "the session bus does not answer:" << bus.lastError().message();
    return bus;
}

}
