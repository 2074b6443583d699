# SPDX-License-Identifier: GPL-3.0-or-later
"""A sound server with a device that is silent, and an ear on it."""

import array
import signal
import subprocess

from harness.processes import wait_for

SINK = "silent"
# Of 32768. The programme is a tone far above, silence is exactly nothing.
LOUD = 300


class SoundServer:
    def __init__(self, desktop):
        self._desktop = desktop
        self._child = None
        self.start()

    def start(self):
        socket = self._desktop.path("pulse")
        self._child = self._desktop.start("pulse", [
            "pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "--disable-shm=yes",
            "-L", f"module-null-sink sink_name={SINK}", "-L", f"module-native-protocol-unix socket={socket}"])
        wait_for("a sound server", lambda: self._desktop.ask("pactl", "info"))

    def kill(self):
        self._child.end(signal.SIGKILL)

    def hears(self):
        """Whether a fifth of a second of what comes out of the device holds sound."""
        wanted = 16000 // 5 * 2
        with subprocess.Popen(
                ["parec", f"--device={SINK}.monitor", "--format=s16le", "--rate=16000", "--channels=1",
                 "--latency-msec=50", "--raw"],
                env=self._desktop.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                stderr=subprocess.DEVNULL) as ear:
            try:
                # Ends by itself: a null device gives its silence at the pace of a real one.
                heard = array.array("h", ear.stdout.read(wanted))
            finally:
                ear.kill()
        return any(abs(sample) > LOUD for sample in heard)

    def wait_for_sound(self):
        wait_for("sound", self.hears)

    def wait_for_silence(self):
        wait_for("silence", lambda: not self.hears())
