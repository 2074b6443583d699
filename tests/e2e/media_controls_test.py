# SPDX-License-Identifier: GPL-3.0-or-later
"""The program under the desktop's media controls, and in the background."""

import unittest

from harness import world
from harness.accessibility import Accessibility
from harness.case import ProgramCase
from harness.processes import wait_for
from harness.program import ROOT_INTERFACE
from harness.window import Window


class MediaControlsTest(ProgramCase):
    def playerctl(self, *words):
        return self.desktop.ask("playerctl", "--player=velarin", *words).strip()

    def wait_for_answer(self, expected, *words):
        wait_for(f"{words} to answer {expected!r}", lambda: self.playerctl(*words) == expected)

    def test_playerctl_drives_it(self):
        self.program.start()
        self.playerctl("open", self.station.address)
        self.sound.wait_for_sound()
        self.wait_for_answer("Playing", "status")
        self.wait_for_answer("Anteprima", "metadata", "title")

        self.station.announce("Orchestra di prova - Il primo brano")
        self.wait_for_answer("Il primo brano", "metadata", "title")
        self.assertEqual(self.playerctl("metadata", "artist"), "Orchestra di prova")
        self.assertEqual(self.playerctl("metadata", "album"), "Anteprima")

        self.playerctl("pause")
        self.wait_for_answer("Paused", "status")
        self.sound.wait_for_silence()
        self.playerctl("play")
        self.wait_for_answer("Playing", "status")
        self.sound.wait_for_sound()

        self.playerctl("volume", "0.25")
        self.program.wait_for_setting("output_volume", 0.25)
        self.assertEqual(float(self.playerctl("volume")), 0.25)

        self.playerctl("stop")
        self.sound.wait_for_silence()
        self.assertNotEqual(self.playerctl("status"), "Playing")

    def test_an_address_that_is_none_of_the_web_is_not_opened(self):
        self.program.start()
        self.program.open("file:///etc/hostname")
        self.program.open("javascript:alert(1)")
        self.assertEqual(self.program.status, "Stopped")
        self.assertEqual(self.program.title, "")

    def test_a_media_key_with_nothing_loaded_brings_the_last_station_back(self):
        way_out = world.World(self.desktop, self.station)
        self.addCleanup(way_out.close)
        self.program.write_settings({"last_station": world.IDENTIFIER})
        self.program.start()
        accessibility = Accessibility(self.desktop)
        self.addCleanup(accessibility.close)
        # Only then are the stations there.
        accessibility.find("push button", world.TILE)
        self.assertFalse(self.program.get("CanGoNext"))
        self.program.call("Next")
        self.sound.wait_for_sound()
        self.program.wait_for_setting("recent_stations", [world.IDENTIFIER])

    def test_a_closed_window_keeps_the_sound_and_is_raised(self):
        self.start_playing()
        window = Window(self.desktop)
        window.wait_until_shown()
        window.close()
        window.wait_until_hidden()
        self.assertTrue(self.sound.hears())
        self.assertTrue(self.program.process.runs)

        self.program.call("Raise", interface=ROOT_INTERFACE)
        window.wait_until_shown()
        self.assertEqual(self.program.status, "Playing")

        window.close()
        window.wait_until_hidden()
        second = self.program.launch()
        self.addCleanup(second.end)
        self.assertEqual(second.exit_code(), 0)
        window.wait_until_shown()
        self.assertTrue(self.sound.hears())


if __name__ == "__main__":
    unittest.main()
