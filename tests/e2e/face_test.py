#!/usr/bin/env python3
"""The windows of the built player as its user sees and handles them: face_test.py PROGRAM_DIRECTORY DEMO_DIRECTORY [unittest arguments]"""
import pathlib
import re
import sys
import unittest

from desktop import Desktop, left_samples, wait_until, write_levels
from skin_reference import POP_OUTS, WINDOWS, Bitmap, Skin

PROGRAM_DIRECTORY = pathlib.Path(sys.argv.pop(1))
SKIN = Skin(pathlib.Path(sys.argv.pop(1)).parent / "skin")

ALIKE = 0.02  # share of pixels: what is taken for the same picture
DIALOGS = {("wmain", "imgOpen"), ("fX", "btnLoad"), ("fX", "btnSave"), ("Playlist", "imgSave")}
FAR = (1270, 1010)  # a place on the root, away from all windows


class FaceTest(unittest.TestCase):
    def setUp(self):
        self.desktop = Desktop(PROGRAM_DIRECTORY)
        self.addCleanup(self.desktop.close)
        self.rendered = self.desktop.directory / "rendered.wav"
        self.log = self.desktop.directory / "log"
        self.ids = {}

    def start(self, *arguments, settings="", place=(100, 100), **variables):
        """The player with its main window at that place of the screen."""
        x, y = place
        text = f"[RTM]\nX={15 * x}\nY={15 * y}\n{settings}"
        (self.desktop.home / "zuvio.ini").write_text(text)
        with self.log.open("ab") as stderr:
            self.player = self.desktop.player(*arguments, stderr=stderr, **variables)
        self.wait_for_all()

    def wait_for_all(self):
        for name in WINDOWS:
            self.wait_for(name)

    def settings(self):
        return (self.desktop.home / "zuvio.ini").read_text()

    def xdo(self, *arguments):
        return self.desktop.output("xdotool", *map(str, arguments)).decode()

    def shown(self, name):
        """The ids of the shown windows of that size; there is one or none."""
        width, height = WINDOWS[name][0]
        found = self.xdo("search", "--onlyvisible", "--class", "velmo-player").split()
        return [window for window in found
                if f"WIDTH={width}\nHEIGHT={height}\n" in self.xdo("getwindowgeometry", "--shell", window)]

    def wait_for(self, name):
        self.ids[name] = wait_until(lambda: self.shown(name), f"window {name}")[0]

    def window(self, name):
        """The id under which the window was last waited for."""
        return self.ids[name]

    def place(self, name):
        text = self.xdo("getwindowgeometry", "--shell", self.window(name))
        return tuple(int(re.search(rf"^{axis}=(-?\d+)", text, re.MULTILINE).group(1)) for axis in "XY")

    def look(self, name):
        size = WINDOWS[name][0]
        pixels = self.desktop.pixels(self.window(name), 0, 0, *size)
        return Bitmap(*size, b"".join(map(bytes, pixels)))

    def point_at(self, name, x, y):
        self.xdo("mousemove", "--sync", "--window", self.window(name), x, y)

    def point_away(self):
        self.xdo("mousemove", "--sync", *FAR)

    def click(self, name, point, button=1):
        self.point_at(name, *point)
        self.xdo("click", button)

    def press_key(self, name, key):
        """The key of a window's control: pressed and released."""
        self.click(name, WINDOWS[name][2][key].middle)

    def wait_for_state(self, name, key, state):
        """The key shows the picture of that state, and that of no other one."""
        differences = {}

        def looks_so():
            seen = self.look(name).part(*key.box)
            differences.update({other: seen.difference(SKIN.key(key, other)) for other in key.states})
            return differences[state] <= ALIKE

        wait_until(looks_so, lambda: f"{state}: {differences}")
        for other, difference in differences.items():
            if other != state:
                self.assertGreater(difference, ALIKE, f"{other} can't be told from {state}")


class Pictures(FaceTest):
    def test_every_window_at_rest_shows_the_pictures_of_its_controls(self):
        self.start()
        self.point_away()
        for name, (size, _, _, rest) in WINDOWS.items():
            with self.subTest(name):
                expected = SKIN.window(name)

                def difference():
                    seen = self.look(name)
                    for left, top, width, height in rest:
                        expected.put(seen.part(left, top, width, height), left, top, width, height)
                    # What is cut out of the window shows what lies behind it.
                    for y, row in enumerate(SKIN.picture(WINDOWS[name][1], 1).rows):
                        for x in range(size[0]):
                            if not any(row[3 * x:3 * x + 3]):
                                expected.rows[y][3 * x:3 * x + 3] = seen.rows[y][3 * x:3 * x + 3]
                    return seen.difference(expected)

                wait_until(lambda: difference() <= 0.001, lambda: f"{name} differs by {difference()}")

    def test_keys_light_up_under_the_pointer_sink_when_pressed_and_come_back(self):
        path = self.desktop.directory / "long.wav"
        write_levels(path, 100, seconds=600)
        self.start(path)
        for name, (_, _, keys, _) in WINDOWS.items():
            for control, key in keys.items():
                try:
                    self.look_at_states(name, control, key)
                except AssertionError as failure:
                    raise AssertionError(f"{name}.{control}: {failure}") from failure

    def test_the_playlists_pop_outs_do_as_well(self):
        self.start()
        for opener, keys in POP_OUTS.items():
            self.press_key("Playlist", opener)
            for control, key in keys.items():
                with self.subTest(control):
                    self.wait_for_state("Playlist", key, "normal")
                    self.point_at("Playlist", *key.middle)
                    self.wait_for_state("Playlist", key, "hover")
            self.point_at("Playlist", 150, 10)
            bottom = next(reversed(keys.values())).box
            wait_until(lambda: self.look("Playlist").part(*bottom).difference(
                SKIN.key(next(reversed(keys.values())), "normal")) > 0.2, "the pop-out goes")

    def look_at_states(self, name, control, key):
        self.point_at(name, *key.middle)
        self.wait_for_state(name, key, "hover")
        self.xdo("mousedown", 1)
        self.wait_for_state(name, key, "pressed")
        if (name, control) == ("frmListMGR", "imgClose"):  # kept: it acts wherever it is let go
            self.xdo("mouseup", 1)
            wait_until(lambda: not self.shown(name), "the manager goes")
            return
        self.release(name, control, key)
        self.point_at(name, 140, 12)  # the ground, in each of the windows
        # Kept: the key to open a file comes back as its neighbour's picture, until the ground is touched.
        self.wait_for_state(name, key, "normal")

    def release(self, name, control, key):
        """Lets go of a pressed key and undoes what that does."""
        if control in ("imgClose", "imgMinimize", "imgCaptionClose", "maincapclose"):
            self.point_away()  # released outside they do nothing
            self.xdo("mouseup", 1)
            return
        self.xdo("mouseup", 1)
        shows = {"imgShowPL": "Playlist", "imgShowListMgr": "frmListMGR", "imgShowFX": "fX"}
        if control in shows:
            wait_until(lambda: not self.shown(shows[control]), f"{shows[control]} goes")
            self.click(name, key.middle)
            self.wait_for(shows[control])
        if (name, control) in DIALOGS:
            self.close_dialog()
        if control == "btnState":
            self.click(name, key.middle)

    def close_dialog(self):
        own = [self.window(name) for name in WINDOWS]
        dialogs = lambda: set(self.xdo("search", "--onlyvisible", "--class", "velmo-player").split()) - set(own)
        dialog = wait_until(dialogs, "a dialog").pop()
        self.xdo("windowactivate", dialog)
        wait_until(lambda: self.xdo("getwindowfocus").strip() == dialog, "focus")
        self.xdo("key", "Escape")
        wait_until(lambda: not dialogs(), "the dialog goes")


class Journey(FaceTest):
    def test_a_list_is_played_moved_folded_sorted_and_found_again(self):
        folder = self.desktop.directory / "music"
        folder.mkdir()
        for name, level in (("b.wav", 100), ("a.wav", 200), ("c.wav", 300)):
            write_levels(folder / name, level, seconds=60)
        self.start(folder, settings="[DJ]\nMethod=3\n", VELMO_AUDIO=f"wav:{self.rendered}")
        playing = lambda: next((value for value in reversed(left_samples(self.rendered)) if value != 0), 0)
        hears = lambda level: wait_until(lambda: playing() == level, lambda: f"level {level}; it is {playing()}")
        hears(200)  # the walk of a folder goes by name
        self.press_key("wmain", "imgNext")
        hears(100)
        self.click("Playlist", (100, 19 + 14 * 2 + 7))
        self.press_key("wmain", "imgPlay")
        hears(300)

        self.drag_block()
        self.fold_equalizer()
        self.sort_backwards()

        self.xdo("windowactivate", "--sync", self.window("wmain"))
        self.xdo("key", "r")
        wait_until(lambda: not left_samples(self.rendered), "a new device after the restart")
        self.wait_for_all()
        self.assertEqual(self.places(), self.block_at(400, 300))
        self.xdo("windowactivate", "--sync", self.window("wmain"))
        self.xdo("key", "x")
        self.assertEqual(self.player.wait(20), 0)
        self.assertIn("X=6000", self.settings())
        saved = (self.desktop.home / "list.zvl").read_text()
        self.assertLess(saved.index("/c.wav"), saved.index("/b.wav"))
        self.assertLess(saved.index("/b.wav"), saved.index("/a.wav"))

        self.player = self.desktop.player()
        self.wait_for_all()
        self.assertEqual(self.places(), self.block_at(400, 300))

    def places(self):
        return {name: self.place(name) for name in WINDOWS}

    @staticmethod
    def block_at(x, y):
        return {"wmain": (x, y), "Playlist": (x + 265, y), "fX": (x, y + 177), "frmListMGR": (x, y + 274)}

    def drag_block(self):
        self.assertEqual(self.places(), self.block_at(100, 100))
        self.point_at("wmain", 140, 12)
        self.xdo("mousedown", 1)
        for step in range(1, 11):
            self.xdo("mousemove", "--sync", 240 + 30 * step, 112 + 20 * step)
        self.xdo("mouseup", 1)
        wait_until(lambda: self.places() == self.block_at(400, 300), lambda: f"the block has moved: {self.places()}")

    def fold_equalizer(self):
        self.press_key("wmain", "imgShowFX")
        wait_until(lambda: not self.shown("fX"), "the equalizer goes")
        wait_until(lambda: self.place("frmListMGR") == (400, 477), "the manager moves up")
        self.assertIn("ShowFX=False", self.settings())
        self.press_key("wmain", "imgShowFX")
        wait_until(lambda: self.shown("fX") and self.places() == self.block_at(400, 300), "all is as it was")

    def sort_backwards(self):
        self.press_key("Playlist", "imgOrder")
        self.click("Playlist", POP_OUTS["imgOrder"]["imgOrderZA"].middle)
        saved = lambda: (self.desktop.home / "list.zvl").read_text()
        wait_until(lambda: saved().index("/c.wav") < saved().index("/a.wav"), "the list is sorted")


if __name__ == "__main__":
    unittest.main()
