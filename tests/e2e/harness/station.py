# SPDX-License-Identifier: GPL-3.0-or-later
"""A radio station of the test's own: Icecast on this machine and a source that sends it a tone."""

import base64
import os
import signal
import socket
import urllib.parse
import urllib.request

from harness.processes import wait_for

PASSWORD = "velarin"
CONFIGURATION = """<icecast>
  <limits><burst-size>65536</burst-size><source-timeout>5</source-timeout></limits>
  <authentication><source-password>{password}</source-password><admin-user>admin</admin-user>
    <admin-password>{password}</admin-password></authentication>
  <hostname>127.0.0.1</hostname>
  <listen-socket><port>{port}</port><bind-address>127.0.0.1</bind-address></listen-socket>
  <paths><logdir>{folder}</logdir><webroot>/usr/share/icecast2/web</webroot>
    <adminroot>/usr/share/icecast2/admin</adminroot></paths>
  <logging><accesslog>access.log</accesslog><errorlog>error.log</errorlog><loglevel>2</loglevel></logging>
  <security><chroot>0</chroot><changeowner><user>nobody</user><group>nogroup</group></changeowner></security>
</icecast>
"""
# The machine's own settings for proxies are none of this station's.
_direct = urllib.request.build_opener(urllib.request.ProxyHandler({}))


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class RadioStation:
    """On air when it is made; `kill` and `start` as often as wanted, always under the same address."""

    def __init__(self, desktop, mount="/prova.mp3"):
        self._desktop = desktop
        self._mount = mount
        self._port = free_port()
        self._server = None
        self._source = None
        self._write_configuration()
        self.start()

    @property
    def address(self):
        return f"http://127.0.0.1:{self._port}{self._mount}"

    def _write_configuration(self):
        folder = self._desktop.path("icecast")
        os.mkdir(folder)
        # It logs as the user that it becomes.
        os.chmod(folder, 0o777)
        self._configuration = os.path.join(folder, "icecast.xml")
        with open(self._configuration, "w", encoding="utf-8") as file:
            file.write(CONFIGURATION.format(password=PASSWORD, port=self._port, folder=folder))

    def start(self):
        self._server = self._desktop.start("icecast", ["icecast2", "-c", self._configuration])
        wait_for("a streaming server", self._is_listening)
        self._source = self._desktop.start("source", [
            "gst-launch-1.0", "-q", "audiotestsrc", "is-live=true", "volume=0.3", "!", "audioconvert", "!",
            "lamemp3enc", "bitrate=128", "cbr=true", "!", "shout2send", "ip=127.0.0.1", f"port={self._port}",
            f"password={PASSWORD}", f"mount={self._mount}", "protocol=http"])
        wait_for("a station on air", self._is_on_air)

    def kill(self):
        self._server.end(signal.SIGKILL)
        self._source.end(signal.SIGKILL)

    def announce(self, song):
        """Tells the server which song is on."""
        query = urllib.parse.urlencode(
            {"mount": self._mount, "mode": "updinfo", "charset": "UTF-8", "song": song})
        request = urllib.request.Request(f"http://127.0.0.1:{self._port}/admin/metadata?{query}")
        key = base64.b64encode(f"admin:{PASSWORD}".encode()).decode()
        request.add_header("Authorization", "Basic " + key)
        _direct.open(request, timeout=10).close()

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
