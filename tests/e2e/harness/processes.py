# SPDX-License-Identifier: GPL-3.0-or-later
"""Child processes that never outlive the test, and waiting that is bounded."""

import os
import signal
import subprocess
import time

# Generous: a condition that is met ends the waiting, so only a failure takes this long.
PATIENCE = 20.0

# Before the command, setpriv(1): the process ends with the one that started it, whatever ends that.
END_WITH_THE_TEST = ["setpriv", "--pdeathsig", "KILL"]
AS_NOBODY = ["--reuid", "nobody", "--regid", "nogroup", "--clear-groups"] if os.geteuid() == 0 else []


class Expired(AssertionError):
    """What was waited for did not come."""


def wait_for(what, condition, patience=PATIENCE):
    """The first true answer of `condition`, asked again and again; `what` tells the reader what did not come."""
    end = time.monotonic() + patience
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > end:
            raise Expired(f"waited {patience:.0f} s in vain: {what}; last answer: {answer!r}")
        time.sleep(0.05)


def stays(condition, seconds):
    """Whether `condition` holds at every look for so long."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if not condition():
            return False
        time.sleep(0.05)
    return True


class Child:
    """A running program; its output goes to a file, so that it never blocks on a full pipe."""

    def __init__(self, command, environment, log, unprivileged=False, pass_fds=()):
        self.name = command[0]
        self.log = log
        rights = AS_NOBODY if unprivileged else []
        with open(log, "ab") as output:
            self.process = subprocess.Popen(
                END_WITH_THE_TEST + rights + ["--"] + command, env=environment, stdin=subprocess.DEVNULL,
                stdout=output, stderr=output, pass_fds=pass_fds)

    @property
    def runs(self):
        return self.process.poll() is None

    def send(self, number):
        self.process.send_signal(number)

    def exit_code(self, patience=PATIENCE):
        """The code of a program that ends by itself; minus the signal that ended it."""
        try:
            return self.process.wait(patience)
        except subprocess.TimeoutExpired:
            raise Expired(f"{self.name} did not end in {patience:.0f} s") from None

    def end(self, number=signal.SIGTERM):
        """Ends it, by force where the signal is not heeded."""
        if self.runs:
            self.send(number)
        try:
            self.process.wait(5)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait(5)

    def output(self):
        with open(self.log, encoding="utf-8", errors="replace") as output:
            return output.read()


def start_telling(command, environment, log):
    """Starts a program that writes one line (its address, its display) to a descriptor, which stands as DESCRIPTOR in
    the command; the child and the line."""
    reading, writing = os.pipe()
    try:
        command = [word.replace("DESCRIPTOR", str(writing)) for word in command]
        child = Child(command, environment, log, pass_fds=(writing,))
    finally:
        os.close(writing)
    with os.fdopen(reading) as told:
        line = told.readline().strip()
    if not line:
        raise Expired(f"{command[0]} did not come up: {child.output()}")
    return child, line


def answer_of(command, environment, patience=PATIENCE):
    """The output of a short command, empty if it failed."""
    done = subprocess.run(command, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, timeout=patience, check=False)
    return done.stdout.decode() if done.returncode == 0 else ""
