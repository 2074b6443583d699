# SPDX-License-Identifier: GPL-3.0-or-later
"""What processes use of the machine, as the kernel counts it."""

import os
import pathlib
import re
import time
from dataclasses import dataclass


@dataclass
class Counters:
    # Seconds, ended threads included, in steps of a hundredth.
    cpu: float
    # Of each thread: its nanoseconds, and the times that it went to sleep, each of which is a wake-up.
    threads: dict


def counters(pid):
    stat = pathlib.Path(f"/proc/{pid}/stat").read_text(encoding="utf-8").rpartition(")")[2].split()
    ticks = int(stat[11]) + int(stat[12])
    threads = {}
    for task in pathlib.Path(f"/proc/{pid}/task").iterdir():
        nanoseconds = int((task / "schedstat").read_text(encoding="utf-8").split()[0])
        status = (task / "status").read_text(encoding="utf-8")
        threads[task.name] = (nanoseconds, int(re.search(r"^voluntary_ctxt_switches:\s*(\d+)", status, re.M).group(1)))
    return Counters(ticks / os.sysconf("SC_CLK_TCK"), threads)


def used(before, after):
    """(CPU seconds, wake-ups). Threads that ended meanwhile are in the coarser sum alone."""
    gone = (0, 0)
    grown = [(now[0] - before.threads.get(thread, gone)[0], now[1] - before.threads.get(thread, gone)[1])
             for thread, now in after.threads.items()]
    exact = sum(nanoseconds for nanoseconds, _ in grown) / 1e9
    # A tick is either's error.
    coarse = after.cpu - before.cpu
    return max(exact, coarse - 0.01), sum(switches for _, switches in grown)


def memory(pid):
    """(proportional, private) in MiB: pages that several processes share count in part, or not at all."""
    text = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text(encoding="utf-8")
    sizes = {key: int(size) / 1024 for key, size in re.findall(r"^(\w+):\s*(\d+) kB", text, re.M)}
    return sizes["Pss"], sizes["Private_Clean"] + sizes["Private_Dirty"]


def over(pids, seconds):
    """name -> (CPU seconds a minute, wake-ups a minute) of processes that run side by side."""
    before = {name: counters(pid) for name, pid in pids.items()}
    time.sleep(seconds)
    minute = 60.0 / seconds
    return {name: tuple(value * minute for value in used(before[name], counters(pid))) for name, pid in pids.items()}
