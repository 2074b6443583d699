# SPDX-License-Identifier: GPL-3.0-or-later
"""The machine sleeps and wakes, the network goes and comes: stand-ins of the system's services tell it."""

import time
import unittest

from harness.case import ProgramCase
from harness.processes import stays, wait_for
from harness.services import CONNECTED, DISCONNECTED, Logind, NetworkManager

OFFLINE = "Nessuna connessione a internet. Riparte da sola appena torna la rete."
# After it woke, the program lets the network come back first.
WAKE_SECONDS = 2.0


class ServicesTest(ProgramCase):
    def stand_in(self, service):
        service = service(self.desktop)
        self.addCleanup(service.end)
        return service

    def test_sleep_pauses_and_waking_resumes(self):
        logind = self.stand_in(Logind)

        def wait_for_delays(expected):
            wait_for(f"the delays {expected}", lambda: logind.delays() == expected)

        self.start_playing()
        wait_for_delays(["shutdown", "sleep"])

        logind.prepare_for_sleep(True)
        wait_for_delays(["shutdown"])
        self.program.wait_for_status_line("In pausa")
        self.sound.wait_for_silence()

        woken = time.monotonic()
        logind.prepare_for_sleep(False)
        self.program.wait_for_status_line("In diretta")
        self.assertGreaterEqual(time.monotonic() - woken, WAKE_SECONDS)
        self.sound.wait_for_sound()
        wait_for_delays(["shutdown", "sleep"])
        wait_for("both lines in the log", lambda: {
            ("interruption", "Il Mac va in stop: pausa"),
            ("interruption", "Il Mac si è risvegliato: riprendo")} <= set(self.program.diagnostics()))

    def test_a_pause_of_the_user_lasts_through_a_sleep(self):
        logind = self.stand_in(Logind)
        self.start_playing()
        wait_for("the delays", lambda: len(logind.delays()) == 2)
        self.program.call("Pause")
        self.program.wait_for_status_line("In pausa")
        logind.prepare_for_sleep(True)
        wait_for("the machine may sleep", lambda: logind.delays() == ["shutdown"])
        logind.prepare_for_sleep(False)
        wait_for("a new delay", lambda: len(logind.delays()) == 2)
        self.assertTrue(stays(lambda: self.program.status == "Paused", WAKE_SECONDS + 0.5))

    def test_without_a_network_it_waits_and_starts_again_when_it_is_back(self):
        network = self.stand_in(NetworkManager)
        self.start_playing()
        network.become(DISCONNECTED)
        self.assertEqual(self.program.status, "Playing")
        self.station.kill()
        self.program.open(self.station.address)
        self.program.wait_for_status_line(OFFLINE)
        self.station.start()
        # Nothing but the network's return ends the waiting.
        self.assertEqual(self.program.artist, OFFLINE)
        network.become(CONNECTED)
        self.program.wait_for_status_line("In diretta")
        self.sound.wait_for_sound()


if __name__ == "__main__":
    unittest.main()
