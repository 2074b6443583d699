# SPDX-License-Identifier: GPL-3.0-or-later
"""What the machine lacks ends nothing: the window opens, and the program ends in good order when it is told to."""

import signal
import unittest

from harness.case import ProgramCase
from harness.desktop import Desktop
from harness.window import Window


class BareCase(ProgramCase):
    with_station = False

    def assert_starts_and_ends(self):
        process = self.program.process = self.program.launch()
        Window(self.desktop).wait_until_shown()
        self.assertTrue(process.runs)
        # The signals are listened to from before the window on; the log is written by then as well.
        self.program.wait_for_starts(1)
        process.send(signal.SIGTERM)
        self.assertEqual(process.exit_code(), 0, process.output())


class WithoutSessionBusTest(BareCase):
    @classmethod
    def make_desktop(cls):
        return Desktop(session_bus=False)

    def test_it_starts_and_ends(self):
        self.assert_starts_and_ends()

    def test_a_second_start_ends_at_once(self):
        self.program.process = self.program.launch()
        Window(self.desktop).wait_until_shown()
        second = self.program.launch()
        self.addCleanup(second.end)
        self.assertEqual(second.exit_code(), 0)
        self.assertTrue(self.program.process.runs)


class WithoutSystemBusTest(BareCase):
    @classmethod
    def make_desktop(cls):
        return Desktop(system_bus=False)

    def test_it_starts_and_ends(self):
        self.assert_starts_and_ends()


class WithoutSoundServerTest(BareCase):
    with_sound = False

    def test_it_starts_and_ends(self):
        self.assert_starts_and_ends()


if __name__ == "__main__":
    unittest.main()
