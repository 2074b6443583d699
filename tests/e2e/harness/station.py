# SPDX-License-Identifier: GPL-3.0-or-later
"""A radio station of the test's own: Icecast on this machine and a source that sends it noise."""

import base64
import functools
import json
import os
import signal
import socket
import subprocess
import tempfile
import threading
import time
import urllib.parse
import urllib.request

from harness.processes import wait_for

PASSWORD = "velarin"
CONFIGURATION = """<icecast>
  <limits><burst-size>{burst}</burst-size><source-timeout>5</source-timeout></limits>
  <authentication><source-password>{password}</source-password><admin-user>admin</admin-user>
    <admin-password>{password}</admin-password></authentication>
  <hostname>127.0.0.1</hostname>
  <listen-socket><port>{port}</port><bind-address>127.0.0.1</bind-address></listen-socket>
  <paths><logdir>{folder}</logdir><webroot>/usr/share/icecast2/web</webroot>
    <adminroot>/usr/share/icecast2/admin</adminroot></paths>
  <logging><accesslog>access.log</accesslog><errorlog>error.log</errorlog><loglevel>2</loglevel></logging>
  <security><chroot>0</chroot></security>
</icecast>
"""
# Bytes a second of the programme: 48 kbit/s, at a constant rate.
PACE = 6000
PROGRAMME_SECONDS = 30
# A new source sends so much at once, so that the server has a burst to give from the start.
HEAD_START = 15 * PACE
# The machine's own settings for proxies are none of this station's.
_direct = urllib.request.build_opener(urllib.request.ProxyHandler({}))


@functools.lru_cache
def programme():
    """MP3; noise, since every piece of it is unlike every other."""
    encoded = subprocess.run(
        ["gst-launch-1.0", "-q", "audiotestsrc", "wave=pink-noise", "volume=0.4", "samplesperbuffer=441",
         f"num-buffers={PROGRAMME_SECONDS * 100}", "!", "audio/x-raw,rate=44100,channels=1", "!", "audioconvert", "!",
         "lamemp3enc", "target=bitrate", f"bitrate={PACE * 8 // 1000}", "cbr=true", "!", "fdsink", "fd=1"],
        stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=60, check=True)
    return encoded.stdout


def _key(user):
    return "Basic " + base64.b64encode(f"{user}:{PASSWORD}".encode()).decode()


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class RadioStation:
    """On air when it is made; `kill` and `start` as often as wanted, always under the same address. A listener is sent
    the last `burst` seconds first."""

    def __init__(self, desktop, burst=2.5):
        self._desktop = desktop
        self._folder = tempfile.mkdtemp(dir=desktop.folder, prefix="icecast-")
        self._port = free_port()
        self._mount = "/prova.mp3"
        self._server = None
        self._write_configuration(int(burst * PACE))
        self.start()

    @property
    def address(self):
        return f"http://127.0.0.1:{self._port}{self._mount}"

    def _write_configuration(self, burst):
        # It logs as another user than the test's.
        os.chmod(self._folder, 0o777)
        self._configuration = os.path.join(self._folder, "icecast.xml")
        with open(self._configuration, "w", encoding="utf-8") as file:
            file.write(CONFIGURATION.format(password=PASSWORD, port=self._port, folder=self._folder, burst=burst))

    def start(self):
        # Icecast refuses to run as root.
        self._server = self._desktop.start("icecast", ["icecast2", "-c", self._configuration], unprivileged=True)
        wait_for("a streaming server", self._is_listening)
        threading.Thread(target=self._send_programme, daemon=True).start()
        wait_for("a station on air", self._is_on_air)

    def kill(self):
        self._server.end(signal.SIGKILL)

    def _send_programme(self):
        """Until the server is killed."""
        try:
            with socket.create_connection(("127.0.0.1", self._port), 10) as server:
                server.sendall(f"SOURCE {self._mount} HTTP/1.0\r\nAuthorization: {_key('source')}\r\n"
                               "Content-Type: audio/mpeg\r\n\r\n".encode())
                self._send_in_time(server)
        except OSError:
            pass

    @staticmethod
    def _send_in_time(server):
        sound = programme() * 2
        begin = time.monotonic()
        sent = 0
        while True:
            due = HEAD_START + int((time.monotonic() - begin) * PACE)
            at = sent % (len(sound) // 2)
            server.sendall(sound[at:at + due - sent])
            sent = due
            time.sleep(0.1)

    def announce(self, song):
        """Tells the server which song is on."""
        query = urllib.parse.urlencode(
            {"mount": self._mount, "mode": "updinfo", "charset": "UTF-8", "song": song})
        request = urllib.request.Request(f"http://127.0.0.1:{self._port}/admin/metadata?{query}")
        request.add_header("Authorization", _key("admin"))
        _direct.open(request, timeout=10).close()

    def listeners(self):
        with _direct.open(f"http://127.0.0.1:{self._port}/status-json.xsl", timeout=10) as answer:
            text = answer.read()
        try:
            return json.loads(text)["icestats"].get("source", {}).get("listeners", 0)
        except ValueError:
            # While a source is just coming, the server's answer has a value missing and is no JSON.
            return 0

    def _is_listening(self):
        try:
            socket.create_connection(("127.0.0.1", self._port), 5).close()
            return True
        except OSError:
            return False

    def _is_on_air(self):
        try:
            _direct.open(self.address, timeout=5).close()
            return True
        except OSError:
            return False
