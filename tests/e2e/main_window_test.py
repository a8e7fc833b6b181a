#!/usr/bin/env python3
"""The main window with its neighbours and menus, driven from outside: main_window_test.py PROGRAM_DIRECTORY DEMO_DIRECTORY
[unittest arguments]"""
import unittest

from desktop import wait_until
from player_test import PlayerTest

# Titles, and where the windows stand from the main window's corner while all are shown.
NEIGHBOURS = {"Playlist": (265, 0), "Equalizer": (0, 177), "ListManager": (0, 274)}


class Neighbours(PlayerTest):
    def setUp(self):
        super().setUp()
        (self.desktop.home / "zuvio.ini").write_text("[RTM]\nX=3000\nY=1500\n")
        self.desktop.player()
        self.main = self.desktop.wait_for_main_window()

    def places(self):
        """Where the windows stand that are shown, by title, from the main window's corner."""
        shown = {title: self.corner(window) for title in NEIGHBOURS for window in self.desktop.windows(title)}
        left, top = self.corner(self.main)
        return {title: (x - left, y - top) for title, (x, y) in shown.items()}

    def corner(self, window):
        answer = self.desktop.output("xdotool", "getwindowgeometry", "--shell", window).decode()
        values = dict(line.split("=") for line in answer.split())
        return int(values["X"]), int(values["Y"])

    def expect(self, places, what):
        wait_until(lambda: self.places() == places, lambda: f"{what}: {self.places()}")

    def click(self, x, y, button=1):
        left, top = self.corner(self.main)
        self.desktop.output("xdotool", "mousemove", str(left + x), str(top + y), "click", str(button))

    def test_they_move_with_it_go_and_come_back(self):
        self.expect(NEIGHBOURS, "all at their places")
        self.assertEqual(self.corner(self.main), (200, 100))
        self.desktop.output("xdotool", "mousemove", "330", "105", "mousedown", "1")
        for step in range(1, 40):
            self.desktop.output("xdotool", "mousemove", str(330 + 3 * step), str(105 + 2 * step))
        self.desktop.output("xdotool", "mouseup", "1")
        wait_until(lambda: self.corner(self.main) == (317, 178), lambda: f"dragged: {self.corner(self.main)}")
        self.expect(NEIGHBOURS, "in one block")

        self.click(112, 144)
        shown = {"Playlist": (265, 0), "ListManager": (0, 177)}
        self.expect(shown, "the manager moves up")
        self.desktop.output("xdotool", "windowactivate", "--sync", self.main, "key", "r")
        wait_until(lambda: "X=4755" in (self.desktop.home / "zuvio.ini").read_text(), "a restart")
        self.main = self.desktop.wait_for_main_window()
        self.expect(shown, "as before the restart")
        self.click(112, 144)
        self.expect(NEIGHBOURS, "the equalizer comes between")

        self.click(240, 8)
        wait_until(lambda: not self.desktop.main_windows() and not self.desktop.windows("Playlist"), "minimised")
        self.desktop.output("xdotool", "windowmap", self.main, "windowactivate", self.main)
        self.expect(NEIGHBOURS, "back with the window")

    def test_its_menus_open_at_its_corner_and_act(self):
        self.click(11, 11)
        wait_until(lambda: self.menu_corner() == (200, 100), lambda: f"the main menu: {self.menu_corner()}")
        self.desktop.output("xdotool", "key", "Escape")
        wait_until(lambda: self.menu_corner() is None, "the menu goes")
        self.click(70, 30, button=3)
        wait_until(lambda: self.menu_corner() == (200, 100), lambda: f"the time's menu: {self.menu_corner()}")
        self.desktop.output("xdotool", "key", "Down", "Return")
        wait_until(lambda: "TimeMode=False" in (self.desktop.home / "zuvio.ini").read_text(), "time that is left")

    def menu_corner(self):
        """Of the one window of the program's that the window manager does not know."""
        known = [int(window, 16) for window in self.all_windows()]
        found = self.desktop.output("xdotool", "search", "--onlyvisible", "--class", "velmo-player").decode().split()
        menus = [window for window in found if int(window) not in known]
        return self.corner(menus[0]) if menus else None


if __name__ == "__main__":
    unittest.main()
