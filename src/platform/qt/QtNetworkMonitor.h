// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/NetworkMonitor.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QVariantMap>

#include <optional>

namespace velarin {

// What NetworkManager on the system bus says (its D-Bus API, NMState): offline while it is disconnected or
// disconnecting, online in every other state. Online too while it is not there, or does not answer within two seconds:
// without it nobody on the machine knows. Every call is asynchronous, and nothing is started by being asked.
//
// Qt's own QNetworkInformation asks NetworkManager in blocking calls on the main thread, and keeps an old verdict when
// NetworkManager has gone; its other backend guesses from the routes. So the bus is asked here.
class QtNetworkMonitor final : public QObject, public NetworkMonitor
{
    Q_OBJECT

public:
    explicit QtNetworkMonitor(QDBusConnection systemBus = QDBusConnection::systemBus());

    void start(std::function<void(bool online)> changed) override;

private:
    void ask();
    void judge(uint state);
    void publish(bool online);
    void onOwnerChanged(const QString& newOwner);
    Q_SLOT void onPropertiesChanged(
        const QString& interface, const QVariantMap& changed, const QStringList& invalidated);

    QDBusConnection m_bus;
    std::function<void(bool)> m_changed;
    // The last verdict that was told.
    std::optional<bool> m_online;
    // Counts what would make the answer to a former question stale.
    quint64 m_question{ 0 };
};

}
