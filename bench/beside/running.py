# SPDX-License-Identifier: GPL-3.0-or-later
"""What playing, idling and a thousand connects cost, beside the others in the same minute."""

import json
import subprocess
import time

from .desktop import Desktop
from .players import OURS, idle_players, players
from .usage import memory, over

ENGINE = OURS + " (engine alone)"
# Until everything that a start loads is loaded.
SETTLING = 12
STATION = "/ok?metaint=16000"


class FaultServer:
    def __init__(self, world):
        self.world = world
        self.process = world.start([world.bin / "velarin-fault-server", "--programme", world.mp3],
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.address = "http://127.0.0.1:" + self.process.stdout.readline().strip()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.world.end(self.process)


class Running:
    """The players at work, or idle without an address: each started alone, or all of them side by side."""

    def __init__(self, world, address=None):
        self.world = world
        self.address = address
        self.desktop = Desktop(world)
        commands = players(world) if address else idle_players(world)
        if address:
            commands[ENGINE] = commands.pop(OURS)
        self.commands = {OURS: None, **commands}

    def start(self, name, device):
        if name == OURS:
            return self._start_program(device)
        command = [word.replace("@ADDRESS@", self.address or "") for word in self.commands[name]]
        return self.world.start(["env", f"PULSE_SINK={device}", *command], stdout=subprocess.DEVNULL,
                                stderr=subprocess.DEVNULL)

    def _start_program(self, device):
        program = self.desktop.start_program(device)
        if self.address:
            self.desktop.play(self.address)
        self.desktop.close_window()
        return program

    def costs(self, seconds):
        """player -> (CPU seconds a minute, wake-ups a minute), all in the same minute."""
        processes = {name: self.start(name, self.world.device(index)) for index, name in enumerate(self.commands)}
        time.sleep(SETTLING)
        figures = over({name: process.pid for name, process in processes.items()}, seconds)
        for process in processes.values():
            self.world.end(process)
        return figures

    def memories(self):
        """player -> (proportional, private MiB), one after the other: what they share they share with no other player."""
        figures = {}
        for name in self.commands:
            process = self.start(name, self.world.device(0))
            time.sleep(SETTLING)
            figures[name] = memory(process.pid)
            self.world.end(process)
        return figures


def playing(world, seconds):
    with FaultServer(world) as server:
        running = Running(world, server.address + STATION)
        return running.costs(seconds), running.memories()


def idling(world, seconds):
    running = Running(world)
    return running.costs(seconds), running.memories()


def thousand_connects(world, count):
    # The silent device begins a stream up to two seconds late unless somebody wants low latency of it.
    world.start(["parec", "--latency-msec=10", f"--device={world.device(0)}.monitor"], stdout=subprocess.DEVNULL)
    time.sleep(3)
    with FaultServer(world) as server:
        answer = subprocess.run(["env", f"PULSE_SINK={world.device(0)}", world.bin / "velarin-thousand-connects",
                                 server.address, str(count)],
                                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True)
    return json.loads(answer.stdout)
