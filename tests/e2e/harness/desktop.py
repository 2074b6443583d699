# SPDX-License-Identifier: GPL-3.0-or-later
"""A desktop of the test's own: a display with a window manager, both buses, the user's folders."""

import os
import shutil
import tempfile

import dbus
import dbus.bus

from harness.processes import Child, answer_of, start_telling, wait_for

# Only the accessibility bus may be started on demand: what else this machine has installed is none of the test's.
BUS_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir={folder}</listen>
  <servicedir>{folder}/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""
ACCESSIBILITY_SERVICE = "/usr/share/dbus-1/services/org.a11y.Bus.service"
# Nobody listens there. Tests reach the local station and nothing of the world, with or without a network.
NO_WORLD = {"http_proxy": "http://127.0.0.1:1", "https_proxy": "http://127.0.0.1:1", "no_proxy": "127.0.0.1"}


class Desktop:
    """Starts at once; `end` ends all of it. `environment` is what a program of this desktop is started with."""

    def __init__(self, display=True, session_bus=True, system_bus=True):
        self.folder = tempfile.mkdtemp(prefix="velarin-e2e-")
        # Servers that give up their rights look into it too.
        os.chmod(self.folder, 0o755)
        self._children = []
        self._connections = {}
        self.environment = self._make_environment()
        # An address that leads nowhere: the machine's own bus must not be found in its place.
        self.environment["DBUS_SYSTEM_BUS_ADDRESS"] = f"unix:path={self.folder}/no-bus"
        if system_bus:
            self.environment["DBUS_SYSTEM_BUS_ADDRESS"] = self._start_bus("system")
        if session_bus:
            self.environment["DBUS_SESSION_BUS_ADDRESS"] = self._start_bus("session")
        if display:
            self._start_display()

    def _make_environment(self):
        kept = {name: os.environ[name] for name in ("PATH", "GST_REGISTRY") if name in os.environ}
        kept.setdefault("GST_REGISTRY", os.path.join(tempfile.gettempdir(), "velarin-e2e-gst-registry.bin"))
        return kept | {
            "LANG": "C.UTF-8", "QT_QUICK_BACKEND": "software", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "PULSE_SERVER": f"unix:{self.path('pulse')}"} | NO_WORLD | self._make_user()

    def _make_user(self):
        """The folders of somebody who has never started the program, as the variables that name them."""
        user = tempfile.mkdtemp(dir=self.folder, prefix="user-")
        folders = {"HOME": "home", "XDG_CONFIG_HOME": "config", "XDG_DATA_HOME": "data", "XDG_CACHE_HOME": "cache",
                   "XDG_STATE_HOME": "state", "XDG_RUNTIME_DIR": "run", "TMPDIR": "tmp"}
        for folder in folders.values():
            os.mkdir(os.path.join(user, folder), 0o700)
        return {name: os.path.join(user, folder) for name, folder in folders.items()}

    def welcome_new_user(self):
        """What was set for the former one is gone."""
        self.environment.update(NO_WORLD | self._make_user())

    def path(self, *parts):
        return os.path.join(self.folder, *parts)

    def log(self, name):
        return self.path(name + ".log")

    def start(self, name, command, unprivileged=False):
        """A process of this desktop, which ends with it."""
        child = Child(command, self.environment, self.log(name), unprivileged)
        self._children.append(child)
        return child

    def ask(self, *command):
        """The output of a short command on this desktop, empty if it failed."""
        return answer_of(list(command), self.environment)

    def _start_bus(self, name):
        folder = self.path(name + "-bus")
        os.makedirs(os.path.join(folder, "services"))
        if name == "session":
            shutil.copy(ACCESSIBILITY_SERVICE, os.path.join(folder, "services"))
        with open(os.path.join(folder, "bus.conf"), "w", encoding="utf-8") as file:
            file.write(BUS_CONFIGURATION.format(folder=folder))
        child, address = start_telling(
            ["dbus-daemon", f"--config-file={folder}/bus.conf", "--nofork", "--print-address=DESCRIPTOR"],
            self.environment, self.log(name + "-bus"))
        self._children.append(child)
        return address

    def _start_display(self):
        child, number = start_telling(
            ["Xvfb", "-displayfd", "DESCRIPTOR", "-screen", "0", "1400x900x24", "-nolisten", "tcp", "-noreset"],
            self.environment, self.log("xvfb"))
        self._children.append(child)
        self.environment["DISPLAY"] = ":" + number
        # Without a window manager no window has the keyboard.
        self.start("openbox", ["openbox", "--sm-disable"])
        wait_for("a window manager", lambda: "window id #" in self.ask("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))

    def bus(self, name):
        """A connection of the test to the "session" or the "system" bus."""
        if name not in self._connections:
            address = self.environment[f"DBUS_{name.upper()}_BUS_ADDRESS"]
            self._connections[name] = dbus.bus.BusConnection(address)
        return self._connections[name]

    def end(self):
        for connection in self._connections.values():
            connection.close()
        # The newest first: the programs before what they stand on.
        for child in reversed(self._children):
            child.end()
        shutil.rmtree(self.folder, ignore_errors=True)
