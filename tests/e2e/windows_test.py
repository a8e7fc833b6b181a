#!/usr/bin/env python3
"""The windows of the built player, judged by pictures of the whole screen: windows_test.py PROGRAM_DIRECTORY DEMO_DIRECTORY [unittest arguments]"""
import pathlib
import re
import subprocess
import sys
import unittest

from desktop import Desktop, wait_until

PROGRAM_DIRECTORY = pathlib.Path(sys.argv.pop(1))
sys.argv.pop(1)  # the demo music is not needed
WIDTH, HEIGHT = 1280, 1024
ROOT = 255  # the bare screen, in grey
SIZES = {"wmain": (265, 177), "Playlist": (314, 490), "fX": (265, 97), "frmListMGR": (265, 138)}


class Picture:
    """A grey picture of the screen, and the block of windows on it."""
    def __init__(self, grey):
        self.grey = grey

    def bounds(self):
        """Left, top, right and bottom of what is not bare; the last two stand one past it."""
        rows = [self.grey[start:start + WIDTH] for start in range(0, len(self.grey), WIDTH)]
        bare = bytes([ROOT])
        covered = [(number, row) for number, row in enumerate(rows) if row.count(ROOT) < WIDTH]
        if not covered:
            return None
        left = min(WIDTH - len(row.lstrip(bare)) for _, row in covered)
        right = max(len(row.rstrip(bare)) for _, row in covered)
        return left, covered[0][0], right, covered[-1][0] + 1

    def form(self):
        """What a block looks like wherever it stands: its size and how many pixels show nothing of it."""
        left, top, right, bottom = self.bounds()
        return right - left, bottom - top, self.grey.count(ROOT)

    def bare(self, left, top, right, bottom):
        return sum(self.grey[row * WIDTH + left:row * WIDTH + right].count(ROOT) for row in range(top, bottom))


class WindowsTest(unittest.TestCase):
    def start_desktop(self, window_manager=True):
        self.desktop = Desktop(PROGRAM_DIRECTORY, window_manager)
        self.addCleanup(self.desktop.close)
        self.desktop.output("xsetroot", "-solid", "white")

    def settings(self, text):
        (self.desktop.home / "zuvio.ini").write_text(text)

    def start_player(self, scale=1.0, **variables):
        """Starts it and waits for the four windows: {name: id}."""
        self.scale = scale
        self.player = self.desktop.player(QT_SCALE_FACTOR=str(scale), **variables)
        sizes = {tuple(int(length * scale + 0.5) for length in size): name for name, size in SIZES.items()}

        def found():
            windows = self.desktop.output("xdotool", "search", "--onlyvisible", "--class", "velmo-player").decode().split()
            places = {window: self.place(window) for window in windows}
            named = {sizes[place[2:]]: window for window, place in places.items() if place and place[2:] in sizes}
            return named if len(named) == len(SIZES) else None

        self.windows = wait_until(found, "four windows")
        self.screen_is_still()
        return self.windows

    def place(self, window):
        """Left, top, width and height, as the server says."""
        found = self.desktop.output("xwininfo", "-id", str(window)).decode()
        values = [re.search(rf"{what}: +(-?\d+)", found) for what in
                  ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]
        return tuple(int(value[1]) for value in values) if all(values) else None

    def places(self):
        return {name: self.place(window) for name, window in self.windows.items()}

    def picture(self):
        return Picture(subprocess.run(["import", "-silent", "-window", "root", "-depth", "8", "gray:-"],
                                      env=self.desktop.environment(), capture_output=True, check=True).stdout)

    def screen_is_still(self):
        """Waits until the windows stand where they stood a moment ago, and are painted."""
        last = []

        def still():
            last.append((self.places(), self.picture().form()))
            return len(last) > 1 and last[-1] == last[-2]
        wait_until(still, "the windows are still")

    def assert_glued(self):
        places = self.places()
        left, top, width, height = places["wmain"]
        self.assertEqual(places["Playlist"][:2], (left + width, top))
        self.assertEqual(places["fX"][:2], (left, top + height))
        self.assertEqual(places["frmListMGR"][:2], (left, top + height + places["fX"][3]))

    def drag(self, start, *ends, pause=1 / 120):
        """Presses at a point of the screen, moves through the others, releases."""
        steps = ["mousemove", *map(str, start), "sleep", "0.1", "mousedown", "1"]
        at = start
        for end in ends:
            count = max(abs(end[0] - at[0]), abs(end[1] - at[1])) // 6
            for step in range(1, count + 1):
                x, y = (round(a + (b - a) * step / count) for a, b in zip(at, end))
                steps += ["mousemove", str(x), str(y), "sleep", f"{pause:.4f}"]
            at = end
        self.desktop.output("xdotool", *steps, "sleep", "0.1", "mouseup", "1")


class Dragging(WindowsTest):
    def film(self, act):
        """Pictures of the screen, 60 a second, while `act` runs."""
        path = self.desktop.directory / "film"
        camera = self.desktop.start(["ffmpeg", "-loglevel", "error", "-f", "x11grab", "-draw_mouse", "0", "-framerate", "60",
                                     "-video_size", f"{WIDTH}x{HEIGHT}", "-i", self.desktop.display, "-pix_fmt", "gray",
                                     "-f", "rawvideo", str(path)])
        wait_until(lambda: path.exists() and path.stat().st_size > 0, "the film runs")
        act()
        camera.terminate()
        camera.wait()
        film = path.read_bytes()
        size = WIDTH * HEIGHT
        return [Picture(film[start:start + size]) for start in range(0, len(film) // size * size, size)]

    def check_block_in_motion(self, window_manager):
        self.start_desktop(window_manager)
        self.settings("[RTM]\nX=1500\nY=1500\n")
        self.start_player()
        self.assert_glued()
        still = self.picture().form()
        left, top, _, _ = self.place(self.windows["wmain"])
        grip = (left + 60, top + 8)
        film = self.film(lambda: self.drag(grip, (grip[0] + 400, grip[1] + 240), (grip[0] - 30, grip[1] + 300), grip,
                                           (grip[0] + 200, grip[1] + 100)))
        places = [picture.bounds()[:2] for picture in film]
        self.assertGreater(len(set(places)), 40, "the film shows the block on its way")
        torn = [place for place, picture in zip(places, film) if picture.form() != still]
        self.assertEqual(torn, [], f"of {len(film)} pictures")
        self.assert_glued()
        self.assertEqual(self.place(self.windows["wmain"])[:2], (left + 200, top + 100))

    def test_a_block_is_whole_in_every_picture_of_a_drag(self):
        self.check_block_in_motion(window_manager=True)

    def test_a_block_is_whole_without_a_window_manager(self):
        self.check_block_in_motion(window_manager=False)

    def test_windows_snap_to_each_other_and_to_the_screen_and_part_when_dragged_alone(self):
        self.start_desktop()
        self.settings("[RTM]\nX=1500\nY=1500\n")
        self.start_player()
        left, top, width, height = self.place(self.windows["fX"])
        self.drag((left + 100, top + 8), (left + 100 - 60, top + 8 + 560))
        self.screen_is_still()
        self.assertEqual(self.place(self.windows["fX"])[:2], (left - 60, top + 560))
        self.assertEqual(self.place(self.windows["wmain"])[:2], (100, 100))
        self.drag((left - 60 + 100, top + 568), (left - 60 + 100 + 33, top + 568 + 81))
        self.screen_is_still()
        self.assertEqual(self.place(self.windows["fX"])[1], HEIGHT - height, "nine pixels from the edge it jumps there")
        # The main window goes without it, the manager stays too: nothing joins it to the block any more.
        self.drag((100 + 60, 108), (100 + 60 + 12, 108 + 24))
        self.screen_is_still()
        self.assertEqual(self.place(self.windows["wmain"])[:2], (112, 124))
        self.assertEqual(self.place(self.windows["Playlist"])[:2], (112 + 265, 124))


class Scales(WindowsTest):
    def test_windows_touch_and_clicks_hit_at_every_scale(self):
        for scale in (1, 1.25, 1.5, 2):
            with self.subTest(scale=scale):
                self.start_desktop()
                self.check_scale(scale)
                self.desktop.close()

    def check_scale(self, scale):
        self.settings("[RTM]\nX=313\nY=151\n")
        self.start_player(scale)
        self.assert_glued()
        self.check_seams()
        # Dragged about, they still touch, and a button far down is hit where it is seen.
        left, top, _, height = self.place(self.windows["wmain"])
        grip = (left + round(60 * scale), top + round(8 * scale))
        self.drag(grip, (grip[0] + 41, grip[1] + 57))
        self.screen_is_still()
        self.assert_glued()
        self.assertEqual(self.place(self.windows["wmain"])[:2], (left + 41, top + 57))
        self.check_seams()
        for corner in ((97, 129), (127, 159)):  # of the equalizer's button, just within its rim
            x, y = (round(place * scale) for place in corner)
            self.desktop.output("xdotool", "mousemove", str(left + 41 + x), str(top + 57 + y), "click", "1")
            wait_until(lambda: bool(self.desktop.windows("Equalizer")) == (corner[0] == 127), "the equalizer goes and comes")
        self.screen_is_still()
        self.assert_glued()

    def check_seams(self):
        """Away from the round corners nothing of the bare screen shows where two windows touch."""
        places = self.places()
        picture = self.picture()
        corner = round(8 * self.scale)
        for upper, lower in (("wmain", "fX"), ("fX", "frmListMGR")):
            left, top, width, height = places[upper]
            seam = top + height
            self.assertEqual(places[lower][1], seam)
            self.assertEqual(picture.bare(left + corner, seam - 2, left + width - corner, seam + 2), 0, (upper, lower))
        left, top, width, height = places["wmain"]
        seam = left + width
        self.assertEqual(picture.bare(seam - 2, top + corner, seam + 2, top + height - corner), 0, "the playlist")
        right, bottom = picture.bounds()[2:]
        playlist = places["Playlist"]
        end = (playlist[0] + playlist[2], min(playlist[1] + playlist[3], HEIGHT))
        self.assertEqual((right, bottom), end, "painted to the last pixel")


class Screens(WindowsTest):
    def xrandr(self, *arguments):
        self.desktop.output("xrandr", *arguments)

    def two_screens(self):
        self.xrandr("--setmonitor", "left", "640/169x1024/270+0+0", "screen")
        self.xrandr("--setmonitor", "right", "640/169x1024/270+640+0", "none")

    def test_a_block_comes_back_to_a_smaller_desktop_and_half_a_window_off_it_stays(self):
        alone = "ShowPL=False\nShowFX=False\nShowPLMGR=False\n"
        for start, more, place in (((18000, 4500), alone, (1200, 300)), ((19150, 15000), alone, (1015, 847)),
                                   ((18000, 4500), "", (1280 - 265 - 314, 300))):
            with self.subTest(start=start, more=more):
                self.start_desktop()
                self.settings(f"[RTM]\nX={start[0]}\nY={start[1]}\n{more}")
                self.player = self.desktop.player()
                window = self.desktop.wait_for_main_window()
                wait_until(lambda: self.place(window)[:2] == place, lambda: f"at {place}: {self.place(window)}", 20)
                self.desktop.close()

    def test_an_edge_between_two_screens_catches_and_a_lost_screen_gives_its_block_back(self):
        self.start_desktop()
        self.two_screens()
        self.settings("[RTM]\nX=9900\nY=1500\n")
        self.start_player()
        main = self.windows["wmain"]
        self.drag((720, 108), (720 - 13, 108))
        wait_until(lambda: self.place(main)[:2] == (640, 100), lambda: f"caught by the edge: {self.place(main)}")
        self.screen_is_still()
        self.xrandr("--delmonitor", "right")
        wait_until(lambda: self.place(main)[:2] == (640 - 265 - 314, 100), lambda: f"on the left: {self.place(main)}", 20)
        self.screen_is_still()
        self.assert_glued()


class Minimising(WindowsTest):
    def check(self, window_manager):
        self.start_desktop(window_manager)
        self.settings("[RTM]\nX=1500\nY=1500\n")
        self.start_player()
        left, top, _, _ = self.place(self.windows["wmain"])
        self.desktop.output("xdotool", "mousemove", str(left + 239), str(top + 8), "click", "1")
        visible = lambda: self.desktop.output("xdotool", "search", "--onlyvisible", "--class", "velmo-player").split()
        wait_until(lambda: not visible(), "all go with the main window")
        self.assertEqual(self.desktop.player().wait(30), 0)
        wait_until(lambda: len(visible()) == 4, "all come back")
        self.screen_is_still()
        self.assert_glued()

    def test_neighbours_go_and_come_with_the_main_window(self):
        self.check(window_manager=True)

    def test_neighbours_go_and_come_without_a_window_manager(self):
        self.check(window_manager=False)

    def test_always_on_top_keeps_the_windows_that_are_there(self):
        self.start_desktop()
        self.settings("[Options]\nAlwaysOnTop=True\n")
        self.start_player()
        wait_until(lambda: b"ABOVE" in self.desktop.output("xprop", "-id", self.windows["wmain"], "_NET_WM_STATE"), "above")
        listed = self.desktop.output("xprop", "-id", self.windows["fX"], "_NET_WM_WINDOW_TYPE", "WM_TRANSIENT_FOR").decode()
        self.assertIn("UTILITY", listed)
        self.assertIn(hex(int(self.windows["wmain"])), listed)


if __name__ == "__main__":
    unittest.main()
