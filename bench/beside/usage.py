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
    # Seconds of the threads that are there, exact.
    exact_cpu: float
    # Times that a thread went to sleep: each is a wake-up.
    switches: int
    threads: int


def counters(pid):
    stat = pathlib.Path(f"/proc/{pid}/stat").read_text(encoding="utf-8").rpartition(")")[2].split()
    ticks = int(stat[11]) + int(stat[12])
    nanoseconds = switches = threads = 0
    for task in pathlib.Path(f"/proc/{pid}/task").iterdir():
        nanoseconds += int((task / "schedstat").read_text(encoding="utf-8").split()[0])
        status = (task / "status").read_text(encoding="utf-8")
        switches += int(re.search(r"^voluntary_ctxt_switches:\s*(\d+)", status, re.M).group(1))
        threads += 1
    return Counters(ticks / os.sysconf("SC_CLK_TCK"), nanoseconds / 1e9, switches, threads)


def proportional_memory(pid):
    """In MiB: pages that several processes share count in part."""
    text = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text(encoding="utf-8")
    return int(re.search(r"^Pss:\s*(\d+)", text, re.M).group(1)) / 1024


def over(pids, seconds):
    """name -> (cpu seconds a minute, wake-ups a minute, MiB at the end) of processes that run side by side."""
    before = {name: counters(pid) for name, pid in pids.items()}
    time.sleep(seconds)
    after = {name: counters(pid) for name, pid in pids.items()}
    minute = 60.0 / seconds
    return {name: (max(after[name].cpu - before[name].cpu, after[name].exact_cpu - before[name].exact_cpu) * minute,
                   (after[name].switches - before[name].switches) * minute, proportional_memory(pids[name]))
            for name in pids}
