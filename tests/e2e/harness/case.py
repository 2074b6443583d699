# SPDX-License-Identifier: GPL-3.0-or-later
"""The frame of a test: a desktop for the class, and a new user with a program for each test."""

import unittest

from harness.desktop import Desktop
from harness.program import Program
from harness.sound import SoundServer
from harness.station import RadioStation


class ProgramCase(unittest.TestCase):
    """What a class does not need is not started."""

    longMessage = True
    with_sound = True
    with_station = True

    @classmethod
    def make_desktop(cls):
        return Desktop()

    @classmethod
    def setUpClass(cls):
        cls.desktop = cls.make_desktop()
        cls.addClassCleanup(cls.desktop.end)
        cls.sound = SoundServer(cls.desktop) if cls.with_sound else None
        cls.station = RadioStation(cls.desktop) if cls.with_station else None
        if cls.station:
            cls.addClassCleanup(lambda: cls.station.kill())

    def setUp(self):
        self.desktop.welcome_new_user()
        self.program = Program(self.desktop)
        self.addCleanup(self.tell_log_of_failure)
        self.addCleanup(self.program.end)

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
