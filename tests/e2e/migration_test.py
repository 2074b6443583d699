# SPDX-License-Identifier: GPL-3.0-or-later
"""What former versions left under their names is taken over at the first start, and at no other."""

import json
import os
import unittest

from harness.case import ProgramCase
from harness.program import START_LINE

FORMER_EVENT = {"id": "6F9619FF-8B86-D011-B42D-00CF4FC964FF", "date": 700000000.0, "category": "playback",
                "message": "Avvio Radio di allora"}
ALARMS = "[]"


class MigrationTest(ProgramCase):
    with_sound = False
    with_station = False

    def write(self, variable, path, content):
        """A file in one of the user's folders."""
        file = os.path.join(self.desktop.environment[variable], path)
        os.makedirs(os.path.dirname(file), exist_ok=True)
        with open(file, "w", encoding="utf-8") as output:
            output.write(content)

    def read(self, variable, path):
        with open(os.path.join(self.desktop.environment[variable], path), encoding="utf-8") as file:
            return file.read()

    def names(self, variable):
        return sorted(os.listdir(self.desktop.environment[variable]))

    def write_former_settings(self, settings):
        self.write("XDG_CONFIG_HOME", "com.brenholt.lumarin.json", json.dumps(settings))

    def test_former_folders_and_settings_are_taken_over(self):
        self.write("XDG_DATA_HOME", "Ardevox/diagnostics.json", json.dumps([FORMER_EVENT]))
        self.write("XDG_DATA_HOME", "alarms.json", ALARMS)
        self.write("XDG_CACHE_HOME", "Lumarin/logos/radio.png", "picture")
        self.write_former_settings({"favorites": ["it/rds"], "output_volume": 0.25})
        self.program.write_settings({"output_volume": 0.75})

        self.program.start()
        self.program.wait_for_starts(1)
        self.assertEqual(self.program.diagnostics()[0], ("playback", "Avvio Radio di allora"))
        self.assertTrue(self.program.diagnostics()[1][1].startswith(START_LINE))
        self.assertEqual(self.read("XDG_DATA_HOME", "Velarin/alarms.json"), ALARMS)
        self.assertEqual(self.read("XDG_CACHE_HOME", "Velarin/logos/radio.png"), "picture")
        self.assertEqual(self.names("XDG_CACHE_HOME").count("Lumarin"), 0)
        self.assertNotIn("Ardevox", self.names("XDG_DATA_HOME"))
        self.assertNotIn("alarms.json", self.names("XDG_DATA_HOME"))
        self.program.wait_for_setting("favorites", ["it/rds"])
        self.assertIs(self.program.settings()["migrated_from_lumarin"], True)
        # What was there already wins.
        self.assertEqual(self.program.settings()["output_volume"], 0.75)
        self.assertEqual(self.program.get("Volume"), 0.75)

    def test_a_second_start_takes_nothing_over(self):
        self.program.start()
        self.program.wait_for_setting("migrated_from_lumarin", True)
        self.program.wait_for_starts(1)
        self.program.end()
        self.write_former_settings({"favorites": ["it/rds"]})
        self.write("XDG_DATA_HOME", "Ardevox/diagnostics.json", json.dumps([FORMER_EVENT]))
        self.program.start()
        self.program.wait_for_starts(2)
        self.assertNotIn("favorites", self.program.settings())
        # Both places exist: the former one is left alone.
        self.assertIn("Ardevox", self.names("XDG_DATA_HOME"))
        self.assertNotIn(("playback", "Avvio Radio di allora"), self.program.diagnostics())


if __name__ == "__main__":
    unittest.main()
