# SPDX-License-Identifier: GPL-3.0-or-later
"""The sound comes back by itself, or never stops: a streaming server and a sound server die and come back."""

import unittest

from harness.case import ProgramCase
from harness.processes import stays, wait_for
from harness.station import RadioStation


class RecoveryTest(ProgramCase):
    def failures(self):
        return [message for _, message in self.program.diagnostics() if message.startswith("Tentativo ")]

    def test_a_server_away_for_a_while_is_asked_again_until_it_answers(self):
        self.start_playing()
        self.station.kill()
        self.program.wait_for_status_line("Riconnessione… tentativo 2 di 5")
        self.assertEqual(self.program.status, "Playing")
        self.sound.wait_for_silence()
        self.station.start()
        self.program.wait_for_status_line("In diretta")
        self.sound.wait_for_sound()
        self.assertTrue(self.program.process.runs)
        wait_for("the attempt in the log", lambda: "Tentativo 1 fallito (network)" in self.failures())

    def test_a_server_that_starts_anew_within_the_reserve_is_not_noticed(self):
        station = RadioStation(self.desktop, burst=12)
        self.addCleanup(lambda: station.kill())

        def goes_on():
            return self.program.artist == "In diretta" and self.sound.hears()

        self.program.start()
        self.program.play(station.address)
        self.sound.wait_for_sound()
        station.kill()
        self.assertTrue(stays(goes_on, 1))
        station.start()
        wait_for("the listener's return", lambda: station.listeners() == 1 or not goes_on())
        self.assertTrue(stays(goes_on, 2))
        self.assertEqual(self.failures(), [])

    def test_a_sound_server_that_was_killed_and_comes_back(self):
        self.start_playing()
        self.sound.kill()
        self.sound.start()
        self.sound.wait_for_sound()
        self.program.wait_for_status_line("In diretta")
        self.assertTrue(self.program.process.runs)


if __name__ == "__main__":
    unittest.main()
