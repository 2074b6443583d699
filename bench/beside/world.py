# SPDX-License-Identifier: GPL-3.0-or-later
"""What the measurements stand on: a folder, a sound server with silent devices, programmes that are told by ear."""

import ctypes
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import time

DEVICES = 10
PROGRAMME_SECONDS = 204.8
PR_SET_PDEATHSIG = 1

_libc = ctypes.CDLL(None, use_errno=True)


def die_with_parent():
    """Of a child before its program starts: nothing of a run outlives it."""
    _libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def wait_until(holds, seconds=10.0):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if holds():
            return True
        time.sleep(0.02)
    return False


class World:
    def __init__(self, build):
        self.bin = pathlib.Path(build).resolve() / "bin"
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="velarin-bench-"))
        # The other players run as another user.
        self.folder.chmod(0o755)
        self.children = []
        self._raise_priority()
        self._start_sound_server()
        self.mp3 = self._encode("mp3", "audio/mpeg")
        self.aac = self._encode("aac", "audio/aac")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for child in reversed(self.children):
            child.kill()
            child.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    @staticmethod
    def device(index):
        return f"ear{index}"

    def start(self, command, **options):
        child = subprocess.Popen(command, preexec_fn=die_with_parent, **options)
        self.children.append(child)
        return child

    def end(self, child):
        child.kill()
        child.wait()
        self.children.remove(child)

    @staticmethod
    def _raise_priority():
        """What is judged is the players, all alike, not what else the machine does."""
        try:
            os.setpriority(os.PRIO_PROCESS, 0, -10)
        except PermissionError:
            pass

    def _start_sound_server(self):
        home = self.folder / "pulse"
        home.mkdir()
        socket = self.folder / "native"
        environment = {key: value for key, value in os.environ.items()
                       if key not in ("PULSE_SERVER", "DBUS_SESSION_BUS_ADDRESS")}
        for name in ("HOME", "XDG_RUNTIME_DIR", "PULSE_RUNTIME_PATH", "PULSE_STATE_PATH"):
            environment[name] = str(home)
        command = ["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                   "--high-priority=no", "--realtime=no", "--disable-shm=yes"]
        command += [f"--load=module-null-sink sink_name={self.device(index)}" for index in range(DEVICES)]
        command += [f"--load=module-native-protocol-unix auth-anonymous=1 socket={socket}"]
        with open(self.folder / "pulse.log", "w", encoding="utf-8") as log:
            self.start(command, env=environment, stdout=log, stderr=log)
        os.environ["PULSE_SERVER"] = f"unix:{socket}"
        if not wait_until(lambda: socket.exists() and self._sound_server_answers()):
            raise SystemExit("the sound server did not start")

    @staticmethod
    def _sound_server_answers():
        return subprocess.run(["pactl", "info"], capture_output=True, check=False).returncode == 0

    def _encode(self, codec, media_type):
        file = self.folder / f"programme.{codec}"
        pace = subprocess.run([self.bin / "velarin-encode-programme", codec, str(PROGRAMME_SECONDS), file],
                              capture_output=True, check=True, text=True).stdout.strip()
        return f"{file},{media_type},{pace}"
