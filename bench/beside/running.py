# SPDX-License-Identifier: GPL-3.0-or-later
"""What playing, idling and a thousand connects cost, beside the others in the same minute."""

import json
import subprocess
import time

from .desktop import Desktop
from .players import OURS, idle_players, players
from .usage import over
from .world import DEVICES

ENGINE = OURS + " (engine alone)"
# Until everything that a start loads is loaded.
SETTLING = 12


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


def _with_device(command, device, address):
    return ["env", f"PULSE_SINK={device}", *(word.replace("@ADDRESS@", address) for word in command)]


def playing(world, seconds):
    """player -> (cpu seconds a minute, wake-ups a minute, MiB)."""
    with FaultServer(world) as server:
        commands = players(world)
        commands[ENGINE] = commands.pop(OURS)
        devices = iter(world.device(index) for index in range(DEVICES))
        desktop = Desktop(world)
        program = desktop.start_program(next(devices))
        desktop.play(server.address + "/ok?metaint=16000")
        desktop.close_window()
        processes = {OURS: program}
        for name, command in commands.items():
            processes[name] = world.start(_with_device(command, next(devices), server.address + "/ok?metaint=16000"),
                                          stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return _measured(world, processes, seconds)


def idling(world, seconds):
    desktop = Desktop(world)
    program = desktop.start_program(world.device(0))
    desktop.close_window()
    processes = {OURS: program}
    for name, command in idle_players(world).items():
        processes[name] = world.start(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return _measured(world, processes, seconds)


def _measured(world, processes, seconds):
    time.sleep(SETTLING)
    figures = over({name: process.pid for name, process in processes.items()}, seconds)
    for process in processes.values():
        world.end(process)
    return figures


def thousand_connects(world, count):
    with FaultServer(world) as server:
        answer = subprocess.run([world.bin / "velarin-thousand-connects", server.address, str(count)],
                                env=None, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True)
    return json.loads(answer.stdout)
