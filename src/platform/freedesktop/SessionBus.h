// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QProcessEnvironment>
#include <QString>

namespace velarin {

// Where the user's session bus is: the address in DBUS_SESSION_BUS_ADDRESS, else the socket $XDG_RUNTIME_DIR/bus if it
// is there, else the empty text. The word "autolaunch" of an address is left out: it means starting a bus.
[[nodiscard]] QString sessionBusAddress(const QProcessEnvironment& environment);

// The connection to the session bus that all desktop services of this process share; not connected where there is no
// bus. QDBusConnection::sessionBus() is not used, since without an address it starts a bus that outlives the program.
[[nodiscard]] QDBusConnection connectToSessionBus(const QProcessEnvironment& environment);

}
