# SPDX-License-Identifier: GPL-3.0-or-later
"""The program under test, and what it shows and writes."""

import json
import os
import signal

import dbus

from harness.processes import Child, wait_for

PLAYER = "org.mpris.MediaPlayer2.velarin"
PLAYER_PATH = "/org/mpris/MediaPlayer2"
PLAYER_INTERFACE = "org.mpris.MediaPlayer2.Player"
ROOT_INTERFACE = "org.mpris.MediaPlayer2"
CALL_SECONDS = 10

WAS_PLAYING = "diag_was_playing"
START_LINE = "Avvio · versione "
CRASH_LINE = "La sessione precedente è finita mentre qualcosa suonava: l'app è stata chiusa di forza o si è bloccata."


class Program:
    """One user's program on a desktop: started and ended as often as wanted, on the same files."""

    def __init__(self, desktop):
        self.desktop = desktop
        self.process = None

    # Life.

    def start(self):
        """Starts it and waits until it can be driven."""
        self.process = self.launch()
        wait_for("the program on the bus", self._answers)

    def launch(self):
        return Child([os.environ["VELARIN_PROGRAM"]], self.desktop.environment, self.desktop.log("velarin"))

    def end(self):
        """For the end of a test: whatever state it is in."""
        if self.process:
            self.process.end(signal.SIGTERM)

    def _answers(self):
        if not self.process.runs:
            raise AssertionError("the program ended at its start: " + self.process.output())
        return self.desktop.bus("session").name_has_owner(PLAYER)

    # Media controls, by raw calls.

    def _object(self):
        return self.desktop.bus("session").get_object(PLAYER, PLAYER_PATH, introspect=False)

    def call(self, method, *arguments, interface=PLAYER_INTERFACE):
        return self._object().get_dbus_method(method, interface)(*arguments, timeout=CALL_SECONDS)

    def get(self, name):
        return self.call("Get", PLAYER_INTERFACE, name, interface=dbus.PROPERTIES_IFACE)

    def open(self, address):
        self.call("OpenUri", address)

    @property
    def status(self):
        return str(self.get("PlaybackStatus"))

    @property
    def title(self):
        return str(self.get("Metadata").get("xesam:title", ""))

    @property
    def artist(self):
        return ", ".join(self.get("Metadata").get("xesam:artist", []))

    def wait_for_status_line(self, line):
        """Where no song is known, the status line stands in the artist's place."""
        wait_for(f'the status line "{line}"', lambda: self.artist == line)

    def play(self, address):
        """Until it is on air."""
        self.open(address)
        self.wait_for_status_line("In diretta")

    # What it wrote.

    @property
    def data(self):
        return os.path.join(self.desktop.environment["XDG_DATA_HOME"], "Velarin")

    @property
    def settings_file(self):
        return os.path.join(self.desktop.environment["XDG_CONFIG_HOME"], "com.brenholt.velarin.json")

    def settings(self):
        return _read_json(self.settings_file, {})

    def write_settings(self, settings):
        with open(self.settings_file, "w", encoding="utf-8") as file:
            json.dump(settings, file)

    def wait_for_setting(self, name, value):
        wait_for(f"the setting {name} = {value!r}", lambda: self.settings().get(name) == value)

    def diagnostics(self):
        """The lines of the log as (category, message), the oldest first."""
        events = _read_json(os.path.join(self.data, "diagnostics.json"), [])
        return [(event["category"], event["message"]) for event in events]

    def starts(self):
        """For each start entry of the log, the entry that follows it; None at the end."""
        lines = self.diagnostics() + [None]
        return [after for line, after in zip(lines, lines[1:]) if line[1].startswith(START_LINE)]

    def wait_for_starts(self, count):
        """The log is written a second after its last line."""
        return wait_for(f"{count} start entries", lambda: len(self.starts()) == count and self.starts())


def _read_json(path, otherwise):
    try:
        with open(path, encoding="utf-8") as file:
            return json.load(file)
    except FileNotFoundError:
        return otherwise
