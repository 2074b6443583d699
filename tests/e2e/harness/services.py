# SPDX-License-Identifier: GPL-3.0-or-later
"""Stand-ins of the system's services on the private system bus."""

import sys

import dbus

from harness.processes import wait_for

MOCK_INTERFACE = "org.freedesktop.DBus.Mock"

LOGIND = "org.freedesktop.login1"
LOGIND_PATH = "/org/freedesktop/login1"
LOGIND_INTERFACE = "org.freedesktop.login1.Manager"

NETWORK_MANAGER = "org.freedesktop.NetworkManager"
NETWORK_MANAGER_PATH = "/org/freedesktop/NetworkManager"
# NMState, of NetworkManager's D-Bus types.
DISCONNECTED = 20
CONNECTED = 70


class Service:
    def __init__(self, desktop, template, name, path):
        self._bus = desktop.bus("system")
        self._name = name
        self._path = path
        self._process = desktop.start(
            template, [sys.executable, "-m", "dbusmock", "--system", "--template", template])
        wait_for(f"the stand-in of {name}", lambda: self._bus.name_has_owner(name))

    def end(self):
        self._process.end()
        wait_for(f"the end of {self._name}", lambda: not self._bus.name_has_owner(self._name))

    def _call(self, method, *arguments, interface=MOCK_INTERFACE):
        service = self._bus.get_object(self._name, self._path, introspect=False)
        return service.get_dbus_method(method, interface)(*arguments)


class Logind(Service):
    def __init__(self, desktop):
        super().__init__(desktop, "logind", LOGIND, LOGIND_PATH)

    def delays(self):
        """What the program asked to delay, as long as it holds the descriptor."""
        held = self._call("ListInhibitors", interface=LOGIND_INTERFACE)
        return sorted(str(what) for what, who, _, mode, _, _ in held if (who, mode) == ("Velarin", "delay"))

    def prepare_for_sleep(self, is_coming):
        self._tell("PrepareForSleep", is_coming)

    def prepare_for_shutdown(self):
        self._tell("PrepareForShutdown", True)

    def _tell(self, signal, value):
        self._call("EmitSignal", LOGIND_INTERFACE, signal, "b", dbus.Array([value], signature="v"))


class NetworkManager(Service):
    def __init__(self, desktop):
        super().__init__(desktop, "networkmanager", NETWORK_MANAGER, NETWORK_MANAGER_PATH)

    def become(self, state):
        self._call("SetGlobalConnectionState", dbus.UInt32(state))
