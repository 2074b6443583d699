# SPDX-License-Identifier: GPL-3.0-or-later
"""What is judged by listening: the first sound, silences, what comes twice and what is missing."""

import json
import subprocess
import statistics
from concurrent.futures import ThreadPoolExecutor

from .players import players
from .world import DEVICES

# Later than the ten seconds of sound that a connection must have given to earn a mend.
FAULT_AT = 12
BURST_BYTES = 64 * 1024

FAULTS = {
    "close": f"/close/{FAULT_AT}",
    "reset": f"/reset/{FAULT_AT}",
    "stall for ever": f"/stall/{FAULT_AT}",
    "stall of 12 s": f"/stall/{FAULT_AT}/12",
    "short-lived address": f"/token/{FAULT_AT}",
    "codec change": f"/codec/{FAULT_AT}",
}
ABSENCES = (7, 10, 13)
REFUSALS = ("503", "404", "refuse")


def hear(world, command, path, device, seconds, until_sound=False):
    arguments = [world.bin / "velarin-hear-player", "--device", world.device(device), "--seconds", str(seconds),
                 "--path", path, "--programme", world.mp3, "--second", world.aac]
    if until_sound:
        arguments.append("--until-sound")
    answer = subprocess.run([*arguments, "--", *command], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True)
    return json.loads(answer.stdout)


def starts(world, rounds, burst_kilobytes):
    """Seconds from the request to the first sound, a list a player; one at a time, in turn, so that they meet the same
    machine."""
    heard = {name: [] for name in players(world)}
    for _ in range(rounds):
        for name, command in players(world).items():
            report = hear(world, command, f"/ok?burst={burst_kilobytes}", 0, 15, until_sound=True)
            heard[name].append(report["requestToSound"])
    return {name: statistics.median([value for value in values if value is not None] or [float("nan")])
            for name, values in heard.items()}


def side_by_side(world, cases, seconds, abreast):
    """(case, player) -> report; each on a device of its own."""
    devices = list(range(DEVICES))
    commands = players(world)

    def listen(job):
        case, name, path = job
        device = devices.pop()
        try:
            return (case, name), hear(world, commands[name], path, device, seconds)
        finally:
            devices.append(device)

    jobs = [(case, name, path) for case, path in cases.items() for name in commands]
    with ThreadPoolExecutor(min(abreast, DEVICES)) as pool:
        return dict(pool.map(listen, jobs))


def faults(world, abreast):
    return side_by_side(world, FAULTS, FAULT_AT + 28, abreast)


def absences(world, abreast):
    cases = {(gone, how): f"/restart/{FAULT_AT}/{gone}/{how}" for gone in ABSENCES for how in REFUSALS}
    return side_by_side(world, cases, FAULT_AT + max(ABSENCES) + 15, abreast)


def least_silence(world, gone):
    """What no player can avoid: the server is away for longer than its burst lasts."""
    pace = float(world.mp3.split(",")[-1])
    return max(0.0, gone - BURST_BYTES / pace)
