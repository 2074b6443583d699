# SPDX-License-Identifier: GPL-3.0-or-later
"""The window by screen reader and by keyboard alone."""

import unittest

from harness import world
from harness.accessibility import FOCUSED, SHOWING, Accessibility
from harness.case import ProgramCase
from harness.processes import wait_for
from harness.window import Window

BUTTON = "push button"
GRID = ("list", "Elenco delle radio")
BAR_BUTTONS = ["Apri il player grande", "Precedente", "Riproduci / Pausa", "Successiva", "Volume", "AirPlay"]
# Roles by which a screen reader tells what can be done with a control.
CONTROL_ROLES = {"push button", "slider", "list item", "check box", "toggle button", "menu item"}


class WindowTest(ProgramCase):
    def setUp(self):
        super().setUp()
        self.world = world.World(self.desktop, self.station)
        self.addCleanup(self.world.close)
        self.window = Window(self.desktop)

    def open_window(self):
        self.program.start()
        self.window.wait_until_shown()
        self.accessibility = Accessibility(self.desktop)
        self.addCleanup(self.accessibility.close)
        # The tiles come when the list of stations is read.
        self.tile = self.accessibility.find(BUTTON, world.TILE)

    def favorites(self):
        return self.program.settings().get("favorites", [])

    def test_every_control_has_a_role_and_a_name(self):
        self.open_window()
        self.program.play(self.station.address)
        controls = [element for element in self.accessibility.window().descendants()
                    if "Press" in element.actions() or element.role == "slider"]
        self.assertGreater(len(controls), len(BAR_BUTTONS))
        nameless = [control for control in controls if control.role not in CONTROL_ROLES or not control.name]
        self.assertEqual(nameless, [])
        shown = [control.name for control in controls if control.role == BUTTON and control.has_state(SHOWING)]
        for name in BAR_BUTTONS:
            self.assertEqual(shown.count(name), 1, name)
        self.assertEqual(len(self.accessibility.elements("slider", "Volume")), 1)

    def test_a_tile_plays_by_its_accessible_action(self):
        self.open_window()
        self.tile.press()
        self.program.wait_for_status_line("In diretta")
        self.assertEqual(self.program.title, world.NAME)
        self.sound.wait_for_sound()
        self.program.wait_for_setting("last_station", world.IDENTIFIER)
        # The tile says so too.
        self.accessibility.find(BUTTON, world.TILE + ", in onda")

    def test_play_button_and_slider_work_by_their_accessible_actions(self):
        self.open_window()
        self.program.play(self.station.address)
        play = self.accessibility.find(BUTTON, "Riproduci / Pausa")
        play.press()
        self.program.wait_for_status_line("In pausa")
        play.press()
        self.program.wait_for_status_line("In diretta")
        self.accessibility.find("slider", "Volume").value = 0.5
        self.program.wait_for_setting("output_volume", 0.5)

    def test_the_heart_keeps_a_favourite_and_lets_it_go(self):
        self.open_window()
        self.tile.press()
        heart = wait_for("the heart of the bar", self.find_heart_of_the_bar)
        heart.press()
        self.program.wait_for_setting("favorites", [world.IDENTIFIER])
        wait_for("the heart's new name", lambda: heart.name == "Rimuovi dai preferiti")
        heart.press()
        self.program.wait_for_setting("favorites", [])
        wait_for("the heart's first name", lambda: heart.name == "Aggiungi ai preferiti")

    def find_heart_of_the_bar(self):
        """The hearts of the tiles say whose they are; the one of the bar is what plays."""
        for heart in self.accessibility.elements(BUTTON, "Aggiungi ai preferiti"):
            if heart.description == "":
                return heart
        return None

    def test_keyboard_alone(self):
        self.open_window()
        self.window.focus()
        grid = self.accessibility.find(*GRID)

        def tab_to_grid():
            if grid_has_focus():
                return True
            self.window.press("Tab")
            return grid_has_focus()

        def grid_has_focus():
            return grid.has_state(FOCUSED) or any(child.has_state(FOCUSED) for child in grid.children())

        wait_for("the keyboard on the stations", tab_to_grid)
        self.window.press("Home", "Down", "Right", "Left", "Up", "c", "o", "u", "n", "t", "r", "y", "Return")
        self.program.wait_for_status_line("In diretta")
        self.assertEqual(self.program.title, world.NAME)

        self.window.press("ctrl+p")
        self.program.wait_for_status_line("In pausa")
        self.window.press("ctrl+p")
        self.program.wait_for_status_line("In diretta")
        self.window.press("ctrl+Down")
        wait_for("a lower volume", lambda: abs(self.program.get("Volume") - 0.94) < 0.001)
        self.window.press("ctrl+Up")
        wait_for("the full volume", lambda: self.program.get("Volume") == 1.0)
        self.window.press("ctrl+d")
        self.program.wait_for_setting("favorites", [world.IDENTIFIER])

    def test_the_menu_ends_the_program_by_its_accessible_action(self):
        self.open_window()
        self.accessibility.find(BUTTON, "Menu").press()
        leave = self.accessibility.find("menu item", "Esci")
        items = self.accessibility.elements("menu item")
        self.assertTrue(all(item.name and "Press" in item.actions() for item in items), items)
        leave.press()
        self.assertEqual(self.program.process.exit_code(), 0)

    def test_the_window_remembers_its_size(self):
        self.open_window()
        self.window.resize(1010, 707)
        self.program.wait_for_setting("window_width", 1010)
        self.program.wait_for_setting("window_height", 707)
        self.program.end()
        self.program.start()
        self.window.wait_until_shown()
        wait_for("the size of before", lambda: self.window.size == (1010, 707))


if __name__ == "__main__":
    unittest.main()
