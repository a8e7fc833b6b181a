#!/usr/bin/env python3
"""The windows of the built player as its user sees and handles them."""
import contextlib
import math
import struct
import unittest
import wave

from desktop import DEMO_DIRECTORY, DesktopTest, wait_until, write_sound
from skin_reference import POP_OUTS, WINDOWS, Bitmap, Skin

SKIN = Skin(DEMO_DIRECTORY.parent / "skin")

ALIKE = 0.02  # share of pixels: what is taken for the same picture
DIALOGS = {("wmain", "imgOpen"), ("fX", "btnLoad"), ("fX", "btnSave"), ("Playlist", "imgSave")}
FAR = (1270, 1010)  # a place on the root, away from all windows
BLOCK = {"wmain": (100, 100), "Playlist": (365, 100), "fX": (100, 277), "frmListMGR": (100, 374)}


class FaceTest(DesktopTest):
    def start(self, *arguments, settings="", **variables):
        """The player with its main window at 100, 100 of the screen."""
        self.settings.write_text(f"[RTM]\nX=1500\nY=1500\n{settings}")
        self.running = self.player(*arguments, **variables)
        self.wait_for_all()

    def wait_for_all(self):
        def places():
            self.ids = {name: window for name in WINDOWS for window in self.shown(name)}
            return {name: self.desktop.place(window)[:2] for name, window in self.ids.items()}

        wait_until(lambda: places() == BLOCK, lambda: f"all stand in one block: {places()}")

    def shown(self, name):
        """The ids of the shown windows of that size; there is one or none."""
        return self.desktop.windows_of_size(WINDOWS[name][0])

    def wait_for(self, name):
        self.ids[name] = wait_until(lambda: self.shown(name), f"window {name}")[0]

    def look(self, name):
        size = WINDOWS[name][0]
        pixels = self.desktop.pixels(self.ids[name], 0, 0, *size)
        return Bitmap(*size, b"".join(map(bytes, pixels)))

    def point_at(self, name, x, y):
        self.desktop.point(self.ids[name], x, y)

    def point_away(self):
        self.desktop.xdo("mousemove", *FAR)

    def click(self, name, point, button=1):
        self.desktop.click(self.ids[name], *point, button)

    def click_key(self, name, key):
        self.click(name, WINDOWS[name][2][key].middle)

    def other_windows(self):
        """Menus and dialogs."""
        return set(self.desktop.player_windows()) - set(self.ids.values())

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
        self.start(self.make("long.wav", 100, seconds=600))
        for name, (_, _, keys, _) in WINDOWS.items():
            for control, key in keys.items():
                try:
                    self.look_at_states(name, control, key)
                except AssertionError as failure:
                    raise AssertionError(f"{name}.{control}: {failure}") from failure

    def test_the_playlists_pop_outs_do_as_well(self):
        self.start()
        for opener, keys in POP_OUTS.items():
            bottom = next(reversed(keys.values()))
            ground = self.look("Playlist").part(*bottom.box)
            self.click_key("Playlist", opener)
            for y in range(471, bottom.middle[1], -1):  # a hand that moves slowly doesn't lose the pop-out
                self.point_at("Playlist", bottom.middle[0], y)
            for control, key in keys.items():
                with self.subTest(control):
                    self.wait_for_state("Playlist", key, "normal")
                    self.point_at("Playlist", *key.middle)
                    self.wait_for_state("Playlist", key, "hover")
            self.point_at("Playlist", 150, 10)
            wait_until(lambda: self.look("Playlist").part(*bottom.box).difference(ground) <= ALIKE, "the pop-out goes")

    def look_at_states(self, name, control, key):
        self.point_at(name, *key.middle)
        self.wait_for_state(name, key, "hover")
        self.desktop.xdo("mousedown", 1)
        self.wait_for_state(name, key, "pressed")
        if (name, control) == ("frmListMGR", "imgClose"):  # kept: it acts wherever it is let go
            self.desktop.xdo("mouseup", 1)
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
            self.desktop.xdo("mouseup", 1)
            return
        self.desktop.xdo("mouseup", 1)
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
        self.desktop.press_key(wait_until(self.other_windows, "a dialog").pop(), "Escape")
        wait_until(lambda: not self.other_windows(), "the dialog goes")


class Journey(FaceTest):
    def test_a_list_is_played_folded_sorted_and_found_again(self):
        for name, level in (("b.wav", 100), ("a.wav", 200), ("c.wav", 300)):
            folder = self.make(f"music/{name}", level, seconds=180).parent
        self.start(folder, settings="[DJ]\nMethod=3\n", VELMO_AUDIO=f"wav:{self.rendered}")
        self.hears(200)  # the walk of a folder goes by name
        self.click_key("wmain", "imgNext")
        self.hears(100)
        self.click("Playlist", (100, 19 + 14 * 2 + 7))
        self.click_key("wmain", "imgPlay")
        self.hears(300)
        self.type("b")
        self.hears(100)
        self.click_key("wmain", "imgStop")
        wait_until(lambda: self.samples()[-1] == 0, "silence")

        self.fold_equalizer()
        self.sort_backwards()

        self.type("r")
        wait_until(lambda: not self.samples(), "a new device after the restart")
        self.wait_for_all()
        self.type("x")
        self.ends(self.running)
        saved = self.saved_list()
        self.assertTrue(saved.index("/c.wav") < saved.index("/b.wav") < saved.index("/a.wav"))
        self.player()
        self.wait_for_all()

    def type(self, key):
        self.desktop.press_key(self.ids["wmain"], key)

    def fold_equalizer(self):
        top_of_manager = lambda: self.desktop.place(self.ids["frmListMGR"])[1]
        self.click_key("wmain", "imgShowFX")
        wait_until(lambda: not self.shown("fX") and top_of_manager() == 277, "the manager moves up")
        self.assertIn("ShowFX=False", self.settings.read_text())
        self.click_key("wmain", "imgShowFX")
        wait_until(lambda: self.shown("fX") and top_of_manager() == 374, "all is as it was")

    def sort_backwards(self):
        backwards = POP_OUTS["imgOrder"]["imgOrderZA"]
        self.click_key("Playlist", "imgOrder")
        self.wait_for_state("Playlist", backwards, "normal")
        self.click("Playlist", backwards.middle)
        wait_until(lambda: self.saved_list().index("/c.wav") < self.saved_list().index("/a.wav"), "the list is sorted")


class Menus(FaceTest):
    def test_they_open_at_the_windows_corner_and_act(self):
        self.start()
        places = lambda: [self.desktop.place(menu)[:2] for menu in self.other_windows()]
        self.click("wmain", (11, 11))
        wait_until(lambda: places() == [(100, 100)], lambda: f"the main menu: {places()}")
        self.desktop.xdo("key", "Escape")
        wait_until(lambda: not places(), "the menu goes")
        self.click("wmain", (70, 30), button=3)
        wait_until(lambda: places() == [(100, 100)], lambda: f"the time's menu: {places()}")
        self.desktop.xdo("key", "Down", "Return")
        wait_until(lambda: "TimeMode=False" in self.settings.read_text(), "time that is left")

    def test_a_tool_tip_comes_up_while_another_window_has_the_keys(self):
        self.start()
        self.click("Playlist", (100, 8))
        wait_until(lambda: self.desktop.xdo("getwindowfocus") == self.ids["Playlist"], "the playlist has the keys")
        for x in (30, 31):
            self.point_at("wmain", x, 104)
        wait_until(self.other_windows, "the tool tip")


class Equalizer(FaceTest):
    def test_bars_tickers_and_keys_change_what_is_heard(self):
        tone = self.desktop.directory / "tone.wav"
        write_sound(tone, [round(3000 * math.sin(2 * math.pi * 1000 * frame / 44100)) for frame in range(44100)], seconds=300)
        self.start(tone, VELMO_AUDIO=f"wav:{self.rendered}")
        bar = 92  # pixels from the left: that of 1 kHz

        def expect(decibels, what):
            peak = lambda: max(self.samples()[-4410:], default=0)
            wanted = 3000 * 10 ** (decibels / 20)
            wait_until(lambda: abs(peak() - wanted) < 0.03 * wanted, lambda: f"{what}: {wanted}; it is {peak()}")

        expect(0, "flat")
        self.click("fX", (bar, 25))
        expect(10, "the bar's top")
        self.point_at("fX", bar, 28)
        self.desktop.xdo("mousedown", 1)
        for y in range(29, 52):
            self.point_at("fX", bar, y)
        self.desktop.xdo("mouseup", 1)
        expect(0, "the ticker back in the middle")
        self.click("fX", (bar, 74))
        expect(-10, "the bar's end")
        self.click_key("fX", "btnState")
        expect(0, "switched off")
        self.click_key("fX", "btnState")
        expect(-10, "and on")
        self.click_key("fX", "btnReset")
        expect(0, "reset")
        self.click_key("fX", "imgCaptionClose")
        wait_until(lambda: self.desktop.place(self.ids["frmListMGR"])[:2] == BLOCK["fX"], "the manager takes its place")
        self.terminate(self.running)
        self.assertIn("ShowFX=False", self.settings.read_text())
        self.assertEqual((self.desktop.home / "zuvio.zfx").read_bytes(), b"ZVFX10\r\n" + b" 700 \r\n" * 11)


class Sliders(FaceTest):
    def drag(self, name, start, end):
        self.point_at(name, *start)
        self.desktop.xdo("mousedown", 1)
        for step in range(1, 21):
            self.point_at(name, *(a + (b - a) * step // 20 for a, b in zip(start, end)))
        self.desktop.xdo("mouseup", 1)

    def start_with_a_long_list(self):
        """The first entry's level tells the second that is heard."""
        first = self.desktop.directory / "first.wav"
        with wave.open(str(first), "wb") as file:
            file.setparams((2, 2, 44100, 0, "NONE", ""))
            for second in range(100):
                file.writeframes(struct.pack("<hh", *[100 * second] * 2) * 44100)
        rows = "".join(f"row {row}\r\n60#{first}\r\n" for row in range(1, 101))
        (self.desktop.home / "list.zvl").write_text("#ZVL20#\r\n" + rows, newline="")
        self.start(settings="[Options]\nReadTitlesOn=play\n", VELMO_AUDIO=f"wav:{self.rendered}")

    def hears_second(self, earliest, latest):
        second = lambda: self.samples()[-1] / 100
        wait_until(lambda: earliest <= second() <= latest, lambda: f"second {earliest} to {latest}; it is {second()}")

    def saves(self, line):
        wait_until(lambda: line in self.settings.read_text(), lambda: f"{line}: {self.settings.read_text()}")

    def test_position_and_volume_are_clicked_and_dragged(self):
        self.start_with_a_long_list()
        self.click_key("wmain", "imgPlay")
        wait_until(lambda: len(self.samples()) > 0, "it plays")
        self.click("wmain", (16 + 109, 76))
        self.hears_second(50, 54)
        self.drag("wmain", (16 + 111 + 8, 77), (16 + 24 + 8, 77))
        self.hears_second(9, 16)
        self.click("wmain", (157 + 44, 52))
        self.saves("Volume=660\n")
        self.hears_second(4, 10)  # at half the volume
        self.drag("wmain", (157 + 44, 52), (300, 52))
        self.saves("Volume=1267.5\n")
        self.drag("wmain", (157 + 84, 52), (60, 52))
        self.saves("Volume=67.5\n")
        wait_until(lambda: self.samples()[-1] == 0, "silence")
        self.click("wmain", (30, 30))
        self.saves("TimeMode=False\n")

    def test_the_list_scrolls_by_arrow_track_and_ticker(self):
        self.start_with_a_long_list()
        # But for the first row, which shows whether the list has the focus.
        rows = lambda: [bytes(row) for row in self.look("Playlist").part(14, 33, 200, 434).rows]
        top = wait_until(lambda: rows() if max(map(max, rows())) > 128 else None, "the list is painted")

        def scrolls(act, what, goes_back=False):
            before = rows()
            act()
            wait_until(lambda: rows() == top if goes_back else rows() != before, what)

        scrolls(lambda: self.drag("Playlist", (292, 43), (292, 440)), "the ticker")
        scrolls(lambda: self.drag("Playlist", (292, 440), (292, 20)), "and back", goes_back=True)
        scrolls(lambda: self.click("Playlist", (292, 300)), "the track")
        scrolls(lambda: self.click("Playlist", (292, 36)), "the track above the ticker", goes_back=True)
        self.point_at("Playlist", 292, 458)
        scrolls(lambda: self.desktop.xdo("mousedown", 1), "the arrow repeats")
        self.desktop.xdo("mouseup", 1)


class Manager(FaceTest):
    def click_row(self, number, **how):
        self.desktop.click(self.ids["frmListMGR"], 60, 19 + 16 * (number - 1) + 8, **how)

    def test_lists_are_opened_renamed_and_removed(self):
        entries = f"rock\r\n2#{self.make('rock.wav', 100, seconds=2)}\r\n".encode()
        internal, rock, jazz = (self.desktop.home / name for name in ("list.zvl", "lists/list0.zvl", "lists/list1.zvl"))
        rock.parent.mkdir()
        internal.write_bytes(b"#ZVL20#Internal playlist\r\n")
        rock.write_bytes(b"#ZVL20#Rock\r\n" + entries)
        jazz.write_bytes(b"#ZVL20#Jazz\r\n")
        self.start()

        def opens():  # again where a busy machine made single clicks of it
            self.click_row(3, times=2)
            with contextlib.suppress(AssertionError):
                return wait_until(lambda: entries in internal.read_bytes(), "the list is open", patience=3)
        wait_until(opens, "a double click opens the list")

        self.click_row(3, button=3)
        wait_until(self.other_windows, "the menu")
        self.desktop.xdo("key", "--delay", 30, "Up", "Up", "Return")
        wait_until(lambda: not self.other_windows(), "the menu goes")
        self.desktop.xdo("type", "--delay", 30, "Old rock")
        self.desktop.xdo("key", "Return")
        wait_until(lambda: rock.read_bytes() == b"#ZVL20#Old rock\r\n" + entries, lambda: f"the new title: {rock.read_bytes()}")
        self.desktop.xdo("key", "Delete")
        wait_until(lambda: not rock.exists(), "the next key is heard again")

        self.click_row(1)
        self.desktop.xdo("key", "--delay", 30, "Delete", "F5")
        self.click_key("frmListMGR", "imgClose")
        wait_until(lambda: "ShowPLMGR=False" in self.settings.read_text(), "it closes and stays away")
        self.assertTrue(internal.exists(), "the internal list can't be removed")


if __name__ == "__main__":
    unittest.main()
