# SPDX-License-Identifier: GPL-3.0-or-later
"""The program itself on a desktop of its own: a virtual display with a window manager, a session bus, empty folders."""

import os
import subprocess

from .world import wait_until

BUS_NAME = "org.mpris.MediaPlayer2.velarin"


class Desktop:
    def __init__(self, world):
        self.world = world
        self.folder = world.folder / "desktop"
        self.folder.mkdir()
        self.environment = dict(os.environ, HOME=str(self.folder), QT_QUICK_BACKEND="software",
                                QT_QPA_PLATFORM="xcb", XDG_CURRENT_DESKTOP="")
        for name in ("config", "data", "cache", "state"):
            self.environment[f"XDG_{name.upper()}_HOME"] = str(self.folder / name)
        runtime = self.folder / "run"
        runtime.mkdir(mode=0o700)
        self.environment["XDG_RUNTIME_DIR"] = str(runtime)
        self.environment["DISPLAY"] = ":" + self._first_line(
            ["Xvfb", "-displayfd", "@FD@", "-screen", "0", "1280x820x24", "-nolisten", "tcp"])
        self._start(["openbox"])
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self._first_line(
            ["dbus-daemon", "--session", "--nofork", "--print-address=@FD@"])

    def start_program(self, device):
        """Started, with its window closed; its process."""
        program = self._start([self.world.bin / "velarin"], PULSE_SINK=device)
        if not wait_until(lambda: self._run("gdbus", "wait", "--session", "--timeout", "1", BUS_NAME), 30):
            raise SystemExit("the program did not come up")
        if not wait_until(self._window_is_open, 30):
            raise SystemExit("the program opened no window")
        return program

    def close_window(self):
        self._run("wmctrl", "-c", "Velarin")
        if not wait_until(lambda: not self._window_is_open()):
            raise SystemExit("the window did not close")

    def play(self, address):
        self._run("gdbus", "call", "--session", "--dest", BUS_NAME, "--object-path", "/org/mpris/MediaPlayer2",
                  "--method", "org.mpris.MediaPlayer2.Player.OpenUri", address)

    def _window_is_open(self):
        answer = subprocess.run(["wmctrl", "-l"], env=self.environment, capture_output=True, check=False, text=True)
        return "Velarin" in answer.stdout

    def _run(self, *command):
        return subprocess.run(command, env=self.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              check=False).returncode == 0

    def _start(self, command, pass_fds=(), **variables):
        with open(self.folder / "log", "a", encoding="utf-8") as log:
            return self.world.start(command, env=dict(self.environment, **variables), stdout=log, stderr=log,
                                    pass_fds=pass_fds)

    def _first_line(self, command):
        """Of what the server writes to the descriptor that it is given."""
        reader, writer = os.pipe()
        self._start([word.replace("@FD@", str(writer)) for word in command], pass_fds=(writer,))
        os.close(writer)
        with os.fdopen(reader, encoding="utf-8") as answer:
            return answer.readline().strip()
