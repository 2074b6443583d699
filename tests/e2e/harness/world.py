# SPDX-License-Identifier: GPL-3.0-or-later
"""The way out to the world, which ends on this machine: a proxy at which every http station is the test's own."""

import socket
import socketserver
import threading
import urllib.parse

# A station of the compiled-in list that is reached over http. Those over https ask the proxy for a tunnel, in vain.
NAME = "Country Power Station"
IDENTIFIER = "it/country-power-station"
TILE = "Country Power Station, Country"

PIECE = 65536
HEAD_SECONDS = 10


class _Relay(socketserver.BaseRequestHandler):
    def handle(self):
        self.request.settimeout(HEAD_SECONDS)
        head = b""
        while b"\r\n\r\n" not in head and len(head) < PIECE:
            piece = self.request.recv(PIECE)
            if not piece:
                return
            head += piece
        if head.startswith(b"GET http://"):
            self._pass_on(head)
        else:
            self.request.sendall(b"HTTP/1.1 502 Bad Gateway\r\nContent-Length: 0\r\n\r\n")

    def _pass_on(self, head):
        station = urllib.parse.urlsplit(self.server.station.address)
        fields = head.partition(b"\r\n")[2]
        with socket.create_connection((station.hostname, station.port), HEAD_SECONDS) as upstream:
            upstream.sendall(f"GET {station.path} HTTP/1.1\r\n".encode() + fields)
            while piece := upstream.recv(PIECE):
                self.request.sendall(piece)


class _Server(socketserver.ThreadingTCPServer):
    daemon_threads = True

    def handle_error(self, request, client_address):
        """A listener or a server that hangs up is what these tests are about."""


class World:
    """Programs that the desktop starts from now on find it."""

    def __init__(self, desktop, station):
        self._server = _Server(("127.0.0.1", 0), _Relay)
        self._server.station = station
        threading.Thread(target=self._server.serve_forever, daemon=True).start()
        address = "http://127.0.0.1:{}".format(self._server.server_address[1])
        desktop.environment.update(http_proxy=address, https_proxy=address)

    def close(self):
        self._server.shutdown()
        self._server.server_close()
