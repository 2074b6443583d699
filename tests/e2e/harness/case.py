# SPDX-License-Identifier: GPL-3.0-or-later
"""The frame of a test: a fresh desktop with a program on it."""

import unittest

from harness.desktop import Desktop
from harness.program import Program
from harness.sound import SoundServer
from harness.station import RadioStation


class ProgramCase(unittest.TestCase):
    """Each test gets a user and a desktop of its own. What it does not need is not started."""

    longMessage = True
    with_sound = True
    with_station = True

    def setUp(self):
        self.desktop = self.make_desktop()
        self.addCleanup(self.desktop.end)
        self.sound = SoundServer(self.desktop) if self.with_sound else None
        self.station = RadioStation(self.desktop) if self.with_station else None
        self.program = Program(self.desktop)
        self.addCleanup(self.tell_log_of_failure)
        self.addCleanup(self.program.end)

    def make_desktop(self):
        return Desktop()

    def run(self, result=None):
        self._result = result if result is not None else self.defaultTestResult()
        self._former_failures = self._count_failures()
        return super().run(self._result)

    def _count_failures(self):
        return len(self._result.failures) + len(self._result.errors)

    def tell_log_of_failure(self):
        if self.program.process and self._count_failures() > self._former_failures:
            print(f"\n-- what the program said in {self.id()}:\n{self.program.process.output()[-4000:]}")

    def start_playing(self):
        self.program.start()
        self.program.play(self.station.address)
        self.sound.wait_for_sound()
