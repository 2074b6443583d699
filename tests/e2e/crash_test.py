# SPDX-License-Identifier: GPL-3.0-or-later
"""A program that was killed while it sounded says so at its next start, and only then."""

import signal
import unittest

from harness.case import ProgramCase
from harness.program import CRASH_LINE, WAS_PLAYING


class CrashTest(ProgramCase):
    def start_again(self, count):
        """Starts it for the count-th time and gives the entry after each start entry, once they are on the disk."""
        self.program.start()
        return self.program.wait_for_starts(count)

    def test_a_kill_while_playing_is_told_by_the_next_start_alone(self):
        self.start_playing()
        self.program.wait_for_setting(WAS_PLAYING, True)
        self.program.wait_for_starts(1)
        self.program.process.end(signal.SIGKILL)

        told = self.start_again(2)
        self.assertEqual(told[1], ("error", CRASH_LINE))
        self.program.wait_for_setting(WAS_PLAYING, False)
        self.program.process.end(signal.SIGKILL)

        self.start_again(3)
        self.assertEqual([line for line in self.program.diagnostics() if line[1] == CRASH_LINE],
                         [("error", CRASH_LINE)])


if __name__ == "__main__":
    unittest.main()
