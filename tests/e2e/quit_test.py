# SPDX-License-Identifier: GPL-3.0-or-later
"""Each way to end the program in good order while it plays ends it with 0, and is not told as a crash afterwards."""

import signal
import unittest

from harness.case import ProgramCase
from harness.program import ROOT_INTERFACE, WAS_PLAYING
from harness.services import Logind
from harness.window import Window


class QuitTest(ProgramCase):
    def assert_ends_in_order(self, quit_it):
        self.start_playing()
        self.program.wait_for_setting(WAS_PLAYING, True)
        quit_it()
        self.assertEqual(self.program.process.exit_code(), 0)
        self.assertIs(self.program.settings()[WAS_PLAYING], False)

        self.program.start()
        self.assertEqual(self.program.wait_for_starts(2)[1], None)

    def test_control_q(self):
        def press():
            window = Window(self.desktop)
            window.focus()
            window.press("ctrl+q")

        self.assert_ends_in_order(press)

    def test_quit_of_the_media_controls(self):
        self.assert_ends_in_order(lambda: self.program.call("Quit", interface=ROOT_INTERFACE))

    def test_termination_signal(self):
        self.assert_ends_in_order(lambda: self.program.process.send(signal.SIGTERM))

    def test_interrupt_signal(self):
        self.assert_ends_in_order(lambda: self.program.process.send(signal.SIGINT))

    def test_hang_up_signal(self):
        self.assert_ends_in_order(lambda: self.program.process.send(signal.SIGHUP))

    def test_shut_down_of_the_machine(self):
        logind = Logind(self.desktop)
        self.addCleanup(logind.end)
        self.assert_ends_in_order(logind.prepare_for_shutdown)


if __name__ == "__main__":
    unittest.main()
