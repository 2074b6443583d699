# SPDX-License-Identifier: GPL-3.0-or-later
"""The program's main window as the window manager and the keyboard see it."""

from harness.processes import wait_for

TITLE = "^Velarin$"


class Window:
    def __init__(self, desktop):
        self._desktop = desktop

    @property
    def identifier(self):
        """Of the window that is shown; empty while it is in the background."""
        return self._desktop.ask("xdotool", "search", "--onlyvisible", "--name", TITLE).strip()

    @property
    def is_shown(self):
        return self.identifier != ""

    @property
    def has_focus(self):
        return self._desktop.ask("xdotool", "getactivewindow").strip() == self.identifier != ""

    @property
    def size(self):
        """Of what is inside the frame, in pixels."""
        lines = self._desktop.ask("xdotool", "getwindowgeometry", "--shell", self.identifier).splitlines()
        facts = dict(line.split("=", 1) for line in lines)
        return int(facts["WIDTH"]), int(facts["HEIGHT"])

    def wait_until_shown(self):
        wait_for("a window", lambda: self.is_shown)

    def wait_until_hidden(self):
        wait_for("no window", lambda: not self.is_shown)

    def focus(self):
        self.wait_until_shown()

        def is_focused():
            if self.has_focus:
                return True
            self._desktop.ask("xdotool", "windowactivate", self.identifier)
            return False

        wait_for("a window that has the keyboard", is_focused)

    def press(self, *keys):
        """Presses the keys one after the other, each in the words of xdotool."""
        self._desktop.ask("xdotool", "key", "--delay", "30", *keys)

    def resize(self, width, height):
        self._desktop.ask("xdotool", "windowsize", self.identifier, str(width), str(height))

    def close(self):
        """As the button in the window's frame does."""
        self._desktop.ask("wmctrl", "-i", "-c", self.identifier)
