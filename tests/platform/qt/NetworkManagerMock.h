// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>

namespace velarin::test {

// A bus of its own with, when asked for, a mocked NetworkManager on it. Everything ends with this.
class NetworkManagerMock
{
public:
    // States of NetworkManager's D-Bus API (NMState).
    enum State : uint
    {
        unknown = 0,
        asleep = 10,
        disconnected = 20,
        disconnecting = 30,
        connecting = 40,
        connectedLocal = 50,
        connectedSite = 60,
        connectedGlobal = 70,
    };

    NetworkManagerMock();
    ~NetworkManagerMock();
    NetworkManagerMock(const NetworkManagerMock&) = delete;
    NetworkManagerMock& operator=(const NetworkManagerMock&) = delete;

    // A new connection to the bus; not connected if the bus could not be started.
    [[nodiscard]] QDBusConnection connection();

    void startManager(State state);
    void stopManager();
    void setState(State state);
    // The manager's process is there and answers nothing.
    void freezeManager();

private:
    QProcess m_bus;
    QProcess m_manager;
    QString m_address;
    int m_connections{ 0 };
};

}
