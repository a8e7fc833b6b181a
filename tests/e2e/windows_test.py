#!/usr/bin/env python3
"""The windows of the built player, judged by pictures of the whole screen."""
import itertools
import signal
import subprocess
import time
import unittest

from desktop import DesktopTest, wait_until

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
        left, top, right, bottom = self.bounds() or (0, 0, 0, 0)
        return right - left, bottom - top, self.grey.count(ROOT)

    def bare(self, left, top, right, bottom):
        return sum(self.grey[row * WIDTH + left:row * WIDTH + right].count(ROOT) for row in range(top, bottom))


class WindowsTest(DesktopTest):
    def setUp(self):
        pass  # each test starts desktops of its own

    def start_desktop(self, window_manager=True):
        super().start_desktop(window_manager)
        self.desktop.output("xsetroot", "-solid", "white")

    def start_player(self, settings="[RTM]\nX=1500\nY=1500\n", scale=1.0):
        """Waits for the four windows: {name: id}."""
        self.scale = scale
        self.settings.write_text(settings)
        self.running = self.player(QT_SCALE_FACTOR=str(scale))
        self.windows = {}
        for name, size in SIZES.items():
            pixels = tuple(int(length * scale + 0.5) for length in size)
            self.windows[name] = wait_until(lambda: self.desktop.windows_of_size(pixels), name)[0]
        self.screen_is_still()

    def place(self, name):
        return self.desktop.place(self.windows[name])

    def places(self):
        return {name: self.place(name) for name in self.windows}

    def picture(self):
        return Picture(subprocess.run(["import", "-silent", "-window", "root", "-depth", "8", "gray:-"],
                                      env=self.desktop.environment(), capture_output=True, check=True).stdout)

    def screen_is_still(self):
        """Waits until the windows stand where they stood a moment ago, and are painted."""
        last = []

        def still():
            places, picture = self.places(), self.picture()
            last.append((places, picture.form()))
            bare = [picture.bare(left, top, min(left + width, WIDTH), min(top + height, HEIGHT)) > width * height // 2
                    for left, top, width, height in places.values()]
            return len(last) > 1 and last[-1] == last[-2] and not any(bare)
        wait_until(still, "the windows are still")

    def wait_for_places(self, expected):
        now = lambda: {name: self.place(name) for name in expected}
        wait_until(lambda: now() == expected, lambda: f"{now()}, not {expected}")

    def wait_for_block(self, left, top):
        """Waits until the windows stand in one block there, and are still."""
        sizes = {name: place[2:] for name, place in self.places().items()}
        width, height = sizes["wmain"]
        corners = {"wmain": (left, top), "Playlist": (left + width, top), "fX": (left, top + height),
                   "frmListMGR": (left, top + height + sizes["fX"][1])}
        self.wait_for_places({name: corner + sizes[name] for name, corner in corners.items()})
        self.screen_is_still()

    def drag(self, start, *ways):
        """Presses at a point of the screen, moves by these ways, 120 steps a second, releases."""
        steps = ["mousemove", *start, "sleep", "0.1", "mousedown", 1]
        at = start
        for way in ways:
            count = max(map(abs, way)) // 6
            for step in range(1, count + 1):
                steps += ["mousemove", round(at[0] + way[0] * step / count), round(at[1] + way[1] * step / count),
                          "sleep", "0.0083"]
            at = at[0] + way[0], at[1] + way[1]
        self.desktop.xdo(*steps, "sleep", "0.1", "mouseup", 1)


class Dragging(WindowsTest):
    def film(self, act):
        """Different pictures of the screen, up to 60 a second, while `act` runs."""
        path = self.desktop.directory / "film"
        camera = self.desktop.start(["ffmpeg", "-loglevel", "error", "-f", "x11grab", "-draw_mouse", "0", "-framerate", "60",
                                     "-video_size", f"{WIDTH}x{HEIGHT}", "-i", self.desktop.display, "-pix_fmt", "gray",
                                     "-f", "rawvideo", str(path)])
        wait_until(lambda: path.exists() and path.stat().st_size > 0, "the film runs")
        act()
        camera.terminate()
        camera.wait()
        with path.open("rb") as film:
            pictures = itertools.groupby(iter(lambda: film.read(WIDTH * HEIGHT), b""))
            return [Picture(grey) for grey, _ in pictures if len(grey) == WIDTH * HEIGHT]

    def check_block_in_motion(self, window_manager):
        self.start_desktop(window_manager)
        self.start_player()
        self.wait_for_block(100, 100)
        still = self.picture().form()
        film = self.film(lambda: self.drag((160, 108), (400, 240), (-430, 60), (30, -300), (200, 100)))
        places = [picture.bounds()[:2] for picture in film]
        self.assertGreater(len(set(places)), 10, "the film shows the block on its way")
        torn = [place for place, picture in zip(places, film) if picture.form() != still]
        self.assertEqual(torn, [], f"of {len(film)} pictures")
        self.wait_for_block(300, 200)
        self.terminate(self.running)
        self.assertIn("X=4500\nY=3000", self.settings.read_text())

    def test_a_block_is_whole_in_every_picture_of_a_drag(self):
        self.check_block_in_motion(window_manager=True)

    def test_a_block_is_whole_without_a_window_manager(self):
        self.check_block_in_motion(window_manager=False)

    def test_a_window_dragged_alone_leaves_the_block_and_snaps_to_the_screen(self):
        self.start_desktop()
        self.start_player()
        left, top, width, height = self.place("fX")
        expected = self.places()
        self.drag((left + 100, top + 8), (-27, 641))
        expected["fX"] = left - 27, HEIGHT - height, width, height  # nine pixels from the edge it jumps there
        self.wait_for_places(expected)
        # The main window goes without it, the manager by the playlist's side goes along.
        self.drag((160, 108), (12, 24))
        for name in expected.keys() - {"fX"}:
            left, top, width, height = expected[name]
            expected[name] = left + 12, top + 24, width, height
        self.wait_for_places(expected)


class Scales(WindowsTest):
    def test_windows_touch_and_clicks_hit_at_every_scale(self):
        for scale in (1, 1.25, 1.5, 2):
            with self.subTest(scale=scale):
                self.start_desktop()
                self.check_scale(scale)
                self.desktop.close()

    def check_scale(self, scale):
        self.start_player("[RTM]\nX=313\nY=151\n", scale)
        left, top = round(313 / 15 * scale), round(151 / 15 * scale)
        self.wait_for_block(left, top)
        self.check_seams()
        # Dragged about, they still touch, and a button far down is hit where it is seen.
        self.drag((left + round(60 * scale), top + round(8 * scale)), (41, 57))
        self.wait_for_block(left + 41, top + 57)
        self.check_seams()
        for corner in ((97, 129), (127, 159)):  # of the equalizer's button, just within its rim
            x, y = (round(place * scale) for place in corner)
            self.desktop.xdo("mousemove", left + 41 + x, top + 57 + y, "click", 1)
            wait_until(lambda: bool(self.desktop.windows("Equalizer")) == (corner[0] == 127), "the equalizer goes and comes")
        self.wait_for_block(left + 41, top + 57)

    def check_seams(self):
        """Away from the round corners nothing of the bare screen shows where two windows touch."""
        places = self.places()
        picture = self.picture()
        corner = round(8 * self.scale)
        for upper in ("wmain", "fX"):
            left, top, width, height = places[upper]
            seam = top + height
            self.assertEqual(picture.bare(left + corner, seam - 2, left + width - corner, seam + 2), 0, f"below {upper}")
        left, top, width, height = places["wmain"]
        seam = left + width
        self.assertEqual(picture.bare(seam - 2, top + corner, seam + 2, top + height - corner), 0, "the playlist")
        playlist = places["Playlist"]
        end = (playlist[0] + playlist[2], min(playlist[1] + playlist[3], HEIGHT))
        self.assertEqual(picture.bounds()[2:], end, "painted to the last pixel")


class Screens(WindowsTest):
    def wait_for_place(self, window, place):
        now = lambda: self.desktop.place(window)[:2]
        wait_until(lambda: now() == place, lambda: f"at {place}: {now()}")

    def test_a_block_comes_back_to_a_smaller_desktop_and_half_a_window_off_it_stays(self):
        alone = "ShowPL=False\nShowFX=False\nShowPLMGR=False\n"
        for start, more, place in (((18000, 4500), alone, (1200, 300)), ((19150, 15000), alone, (1015, 847)),
                                   ((18000, 4500), "", (1280 - 265 - 314, 300))):
            with self.subTest(start=start, more=more):
                self.start_desktop()
                self.settings.write_text(f"[RTM]\nX={start[0]}\nY={start[1]}\n{more}")
                self.player()
                self.wait_for_place(self.desktop.wait_for_main_window(), place)
                self.desktop.close()

    def start_two_screens(self):
        self.start_desktop()
        for name, left, output in (("left", 0, "screen"), ("right", 640, "none")):
            self.desktop.output("xrandr", "--setmonitor", name, f"640/169x1024/270+{left}+0", output)

    def test_a_menu_opens_at_its_window_on_the_second_of_two_scaled_screens(self):
        self.start_two_screens()
        self.start_player("[RTM]\nX=5250\nY=750\n", scale=2)
        self.desktop.xdo("mousemove", 700 + 22, 100 + 22, "click", 1)
        menus = lambda: [self.desktop.place(window)[:2] for window in self.desktop.player_windows()
                         if window not in self.windows.values()]
        wait_until(lambda: menus() == [(700, 100)], lambda: f"the menu: {menus()}")

    def test_an_edge_between_two_screens_catches_and_a_lost_screen_gives_its_block_back(self):
        self.start_two_screens()
        self.start_player("[RTM]\nX=9900\nY=1500\n")
        self.drag((720, 108), (-13, 0))
        self.wait_for_place(self.windows["wmain"], (640, 100))
        # Held up for longer than its windows need to rest after the drag, the player sees where the window manager puts them
        # before it hears of the screen.
        self.running.send_signal(signal.SIGSTOP)
        rested = time.monotonic() + 0.5
        self.wait_for_block(640, 100)
        self.desktop.output("xrandr", "--delmonitor", "right")
        wait_until(lambda: self.place("fX")[:2] != (640, 277), "the window manager moves the windows")
        wait_until(lambda: time.monotonic() > rested, "time passes")
        self.running.send_signal(signal.SIGCONT)
        self.wait_for_place(self.windows["wmain"], (640 - 265 - 314, 100))
        self.wait_for_block(640 - 265 - 314, 100)


class Minimising(WindowsTest):
    def check(self, window_manager):
        self.start_desktop(window_manager)
        self.start_player()
        self.desktop.xdo("mousemove", 339, 108, "click", 1)
        wait_until(lambda: not self.desktop.player_windows(), "all go with the main window")
        self.ends(self.player())
        wait_until(lambda: len(self.desktop.player_windows()) == 4, "all come back")
        self.wait_for_block(100, 100)

    def test_neighbours_go_and_come_with_the_main_window(self):
        self.check(window_manager=True)

    def test_neighbours_go_and_come_without_a_window_manager(self):
        self.check(window_manager=False)

    def test_always_on_top_keeps_the_windows_that_are_there(self):
        self.start_desktop()
        self.start_player("[Options]\nAlwaysOnTop=True\n")
        wait_until(lambda: "ABOVE" in self.desktop.output("xprop", "-id", self.windows["wmain"], "_NET_WM_STATE"), "above")
        listed = self.desktop.output("xprop", "-id", self.windows["fX"], "_NET_WM_WINDOW_TYPE", "WM_TRANSIENT_FOR")
        self.assertIn("UTILITY", listed)
        self.assertIn(hex(int(self.windows["wmain"])), listed)

    def test_a_window_that_comes_back_after_always_on_top_was_switched_sticks_as_before(self):
        self.start_desktop()
        self.start_player()
        block = self.picture().form()
        self.desktop.xdo("mousemove", 111, 111, "click", 1)
        wait_until(lambda: len(self.desktop.player_windows()) == 5, "the menu")
        self.desktop.xdo("key", "--delay", 30, *["Down"] * 6, "Return")
        wait_until(lambda: "AlwaysOnTop=True" in self.settings.read_text(), "on top")
        for count in (3, 4):
            self.desktop.xdo("mousemove", 132, 244, "click", 1)
            wait_until(lambda: len(self.desktop.player_windows()) == count, f"{count} windows")
        self.windows["Playlist"] = self.desktop.windows_of_size(SIZES["Playlist"])[0]
        self.screen_is_still()
        self.assertEqual(self.picture().form(), block, "in its place, with its outline")
        self.drag((160, 108), (60, 48))
        self.screen_is_still()
        self.wait_for_block(160, 148)
        self.assertEqual(self.picture().form(), block)


if __name__ == "__main__":
    unittest.main()
