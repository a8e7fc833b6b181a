#!/usr/bin/env python3
"""The built player on a private desktop, driven from outside: player_test.py PROGRAM_DIRECTORY DEMO_DIRECTORY [unittest arguments]"""
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import unittest

from desktop import Desktop, left_samples, levels_of, values_of, wait_until, write_levels

PROGRAM_DIRECTORY = pathlib.Path(sys.argv.pop(1))
DEMO_DIRECTORY = pathlib.Path(sys.argv.pop(1))


class PlayerTest(unittest.TestCase):
    def setUp(self):
        self.desktop = Desktop(PROGRAM_DIRECTORY)
        self.addCleanup(self.desktop.close)
        self.rendered = self.desktop.directory / "rendered.wav"

    def heard(self):
        return values_of(self.rendered) - {0}

    def make(self, name, level, seconds=0.2):
        path = self.desktop.directory / name
        write_levels(path, level, seconds)
        return path

    def all_windows(self):
        root = self.desktop.output("xprop", "-root", "_NET_CLIENT_LIST").decode()
        return re.findall("0x[0-9a-f]+", root)

    def play_in_order(self):
        (self.desktop.home / "zuvio.ini").write_text("[DJ]\nMethod=3\n")

    def cyan(self, window, left, top, width, height):
        """How many pixels of that part of the window glow."""
        return sum(1 for red, green, blue in self.desktop.pixels(window, left, top, width, height)
                   if green > 150 and blue > 150 and red < green - 40)


class Playing(PlayerTest):
    def test_a_file_plays_whole_and_its_window_shows_title_and_time(self):
        path = self.make("whole.wav", 1234, seconds=3.5)
        player = self.desktop.player(path, VELMO_AUDIO=f"wav:{self.rendered}")
        window = self.desktop.wait_for_main_window()
        wait_until(lambda: 1234 in self.heard(), "sound")
        wait_until(lambda: self.cyan(window, 122, 22, 128, 15) > 30, "the title")
        clock = lambda: self.desktop.pixels(window, 16, 22, 101, 17)
        first = clock()
        wait_until(lambda: clock() != first, "the clock goes on")
        wait_until(lambda: levels_of(self.rendered)[-1][0] == 0 and 1234 in self.heard(), "the end")
        runs = [run for run in levels_of(self.rendered) if run[0] != 0]
        self.assertEqual(runs, [[1234, int(3.5 * 44100)]], "every frame once, unchanged")
        player.send_signal(signal.SIGTERM)
        self.assertEqual(player.wait(20), 0)

    def test_every_piece_of_the_demo_music_opens(self):
        pieces = sorted(path for path in DEMO_DIRECTORY.iterdir() if path.suffix not in (".md", ".zvl"))
        self.assertGreaterEqual(len(pieces), 5)
        for piece in pieces:
            with self.subTest(piece.name):
                self.rendered.unlink(missing_ok=True)
                player = self.desktop.player(piece, VELMO_AUDIO=f"wav:{self.rendered}")
                wait_until(self.heard, f"sound of {piece.name}")
                player.terminate()
                self.assertEqual(player.wait(20), 0)

    def test_the_picture_moves_while_music_plays_and_a_click_changes_its_view(self):
        self.desktop.player(DEMO_DIRECTORY / "night-ferry.mp3")
        window = self.desktop.wait_for_main_window()
        picture = lambda: self.desktop.pixels(window, 16, 39, 100, 27)
        green = lambda: [pixel for pixel in picture() if pixel[1] > 190 and pixel[2] == 0]
        wait_until(lambda: len(green()) > 20, "bars")
        first = picture()
        wait_until(lambda: picture() != first, "they move")
        self.desktop.output("xdotool", "mousemove", "--sync", "--window", window, "60", "50", "click", "1")
        wait_until(lambda: "Mode=Oscilloscope" in (self.desktop.home / "zuvio.ini").read_text(), "the next view is saved")
        wait_until(lambda: (255, 255, 248) in picture() and not green(), "the history with its mark")

    def test_what_is_no_sound_is_reported_and_the_player_stays(self):
        path = self.desktop.directory / "text.mp3"
        path.write_text("no sound at all\n" * 100)
        player = self.desktop.player(path)
        self.desktop.wait_for_main_window()
        self.assertIsNone(player.poll())
        wait_until(lambda: len(self.all_windows()) == 5, "the error window, beside the four")


class Transport(PlayerTest):
    def test_keys_and_buttons_drive_it_through_a_restart_to_the_exit(self):
        folder = self.desktop.directory / "music"
        folder.mkdir()
        for name, level in (("a.wav", 100), ("b.wav", 200), ("c.wav", 300)):
            write_levels(folder / name, level, seconds=60)
        player = self.desktop.player(folder, VELMO_AUDIO=f"wav:{self.rendered}")
        window = self.desktop.wait_for_main_window()
        self.desktop.output("xdotool", "windowactivate", "--sync", window)
        playing = lambda: next((value for value in reversed(left_samples(self.rendered)) if value != 0), 0)
        key = lambda name: self.desktop.output("xdotool", "key", "--window", window, name)
        click = lambda x: self.desktop.output("xdotool", "mousemove", "--sync", "--window", window, str(x), "104",
                                              "click", "1")
        for act, level in ((lambda: None, 100), (lambda: key("n"), 200), (lambda: click(170), 300),
                           (lambda: click(30), 200), (lambda: key("b"), 100)):
            act()
            wait_until(lambda: playing() == level, lambda: f"level {level}; it is {playing()}")
        key("e")
        wait_until(lambda: left_samples(self.rendered)[-1] == 0, "silence")
        key("r")
        wait_until(lambda: not self.heard(), "a new device")
        window = self.desktop.wait_for_main_window()
        self.desktop.output("xdotool", "windowactivate", "--sync", window)
        click(58)
        wait_until(lambda: playing() == 100, "the first row again")
        key("x")
        self.assertEqual(player.wait(20), 0)
        settings = (self.desktop.home / "zuvio.ini").read_text()
        self.assertIn("Volume=1215", settings)
        self.assertIn("State=Normal", settings)
        saved = (self.desktop.home / "list.zvl").read_text()
        self.assertEqual([saved.count(f"/{name}.wav") for name in "abc"], [1, 1, 1])


class Instances(PlayerTest):
    def test_a_second_process_hands_its_file_over(self):
        self.play_in_order()
        first = self.desktop.player(self.make("first.wav", 100, seconds=3), VELMO_AUDIO=f"wav:{self.rendered}")
        wait_until(lambda: 100 in self.heard(), "the first file")
        for name, level in (("second.wav", 200), ("third.wav", 300)):
            self.assertEqual(self.desktop.player(self.make(name, level)).wait(20), 0)
        self.assertEqual(len(self.desktop.main_windows()), 1)
        wait_until(lambda: self.heard() == {100, 200, 300}, "all three files")
        self.assertIsNone(first.poll())

    def test_twenty_processes_at_once_end_as_one_player_with_all_twenty_files(self):
        self.play_in_order()
        levels = [100 * (number + 1) for number in range(20)]
        # Long enough, in real time, for all to arrive before the first has ended.
        files = [self.make(f"file{level}.wav", level, seconds=3) for level in levels]
        players = [self.desktop.player(path, VELMO_AUDIO=f"wav:{self.rendered}") for path in files]
        wait_until(lambda: sum(player.poll() is None for player in players) == 1, "one player is left")
        self.assertEqual({player.poll() for player in players} - {None}, {0})
        wait_until(lambda: self.heard() == set(levels),
                   lambda: f"all twenty; heard so far: {sorted(self.heard())}", patience=180)

    def test_a_killed_player_leaves_nothing_in_the_way(self):
        first = self.desktop.player()
        self.desktop.wait_for_main_window()
        first.kill()
        first.wait()
        wait_until(lambda: not self.desktop.main_windows(), "the window goes")
        second = self.desktop.player(self.make("again.wav", 500), VELMO_AUDIO=f"wav-fast:{self.rendered}")
        wait_until(lambda: 500 in self.heard(), "the next start plays")
        third = self.desktop.player()
        self.assertEqual(third.wait(20), 0, "and is found by others")
        self.assertIsNone(second.poll())

    def test_an_empty_start_brings_the_minimised_player_back(self):
        self.desktop.player()
        window = self.desktop.wait_for_main_window()
        self.desktop.output("xdotool", "windowminimize", window)
        wait_until(lambda: not self.desktop.main_windows(), "minimised")
        self.assertEqual(self.desktop.player().wait(20), 0)
        self.assertEqual(self.desktop.wait_for_main_window(), window)

    def test_two_players_run_side_by_side_where_the_settings_allow_it(self):
        (self.desktop.home / "zuvio.ini").write_text("[Options]\nAllowMultipleInstances=TRUE\n")
        players = [self.desktop.player(), self.desktop.player()]
        wait_until(lambda: len(self.desktop.main_windows()) == 2, "two windows")
        self.assertEqual([player.poll() for player in players], [None, None])


class Endings(PlayerTest):
    def settings(self):
        return (self.desktop.home / "zuvio.ini").read_text()

    def test_signals_and_the_window_manager_end_the_program_in_order(self):
        endings = {number.name: lambda player, window, number=number: player.send_signal(number)
                   for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP)}
        endings["close"] = lambda player, window: self.desktop.output("xdotool", "key", "--window", window, "alt+F4")
        endings["imgClose"] = lambda player, window: self.desktop.output(
            "xdotool", "mousemove", "--sync", "--window", window, "255", "8", "click", "1")
        for name, end in endings.items():
            with self.subTest(name):
                (self.desktop.home / "zuvio.ini").unlink(missing_ok=True)
                player = self.desktop.player()
                window = self.desktop.wait_for_main_window()
                self.desktop.output("xdotool", "windowactivate", "--sync", window)
                end(player, window)
                self.assertEqual(player.wait(20), 0)
                self.assertIn("State=Normal", self.settings())

    def test_the_window_comes_back_where_it_was(self):
        (self.desktop.home / "zuvio.ini").write_text("[RTM]\r\nX=3000\r\nY=4500\r\n")
        player = self.desktop.player()
        window = self.desktop.wait_for_main_window()
        place = lambda: self.desktop.output("xdotool", "getwindowgeometry", window).decode()
        wait_until(lambda: "200,300" in place(), f"place: {place()}")
        player.terminate()
        self.assertEqual(player.wait(20), 0)
        self.assertIn("X=3000\r\nY=4500\r\n", self.desktop.home.joinpath("zuvio.ini").read_bytes().decode())


class StartTest(PlayerTest):
    """Starts of a copy of the program, from which the test takes files away."""
    def copy_of_program(self, without=()):
        copy = self.desktop.directory / "program"
        wanted = {"zuvio", "libbass.so", "libbass_fx.so", "libvelmotags.so", "plugins"} - set(without)
        shutil.copytree(PROGRAM_DIRECTORY, copy, ignore=lambda folder, names: [
            name for name in names if pathlib.Path(folder) == PROGRAM_DIRECTORY and name not in wanted])
        return copy

    def make_library_of_another_version(self, path):
        names = re.findall(r"\bT (BASS_\w+)", subprocess.run(
            ["nm", "-D", "--defined-only", str(path)], capture_output=True, text=True).stdout)
        self.assertTrue(names)
        source = self.desktop.directory / "other.c"
        source.write_text("".join(f"unsigned {name}(void) {{ return 0x02030000; }}\n" for name in names))
        path.unlink()
        subprocess.run(["gcc", "-shared", "-fPIC", "-o", str(path), str(source)], check=True)

    def wait_for_box(self, title, other_than=None):
        box = wait_until(lambda: set(self.desktop.windows(title)) - {other_than}, f"box '{title}'").pop()
        self.assertFalse(self.desktop.main_windows())
        return box

    def close_box(self, box, title):
        # A key of the server's own, not one sent to the window: after the latter the next box closes by itself.
        self.desktop.output("xdotool", "windowactivate", box)
        wait_until(lambda: self.desktop.output("xdotool", "getwindowfocus").decode().strip() == box, "focus")
        self.desktop.output("xdotool", "key", "Return")
        wait_until(lambda: box not in self.desktop.windows(title), f"box '{title}' goes")


class FatalStarts(StartTest):
    def expect_box(self, title, **how):
        player = self.desktop.player(**how)
        self.close_box(self.wait_for_box(title), title)
        self.assertEqual(player.wait(20), 1)

    def test_without_the_sound_library_a_box_ends_the_start(self):
        self.expect_box("BASS.DLL", program_directory=self.copy_of_program(without=["libbass.so"]))

    def test_a_sound_library_of_another_version_ends_the_start(self):
        copy = self.copy_of_program()
        self.make_library_of_another_version(copy / "libbass.so")
        self.expect_box("BASS.DLL", program_directory=copy)

    def test_an_output_that_cannot_be_opened_ends_the_start(self):
        self.expect_box("Error", VELMO_AUDIO="wav:/nowhere/file.wav")


class IncompleteStarts(StartTest):
    def test_without_equalizer_two_boxes_come_and_the_program_goes_on(self):
        copy = self.copy_of_program(without=["libbass_fx.so"])
        player = self.desktop.player(self.make("sound.wav", 800), program_directory=copy,
                                     VELMO_AUDIO=f"wav-fast:{self.rendered}")
        first = self.wait_for_box("BASS_FX.DLL")
        self.close_box(first, "BASS_FX.DLL")
        self.close_box(self.wait_for_box("BASS_FX.DLL", other_than=first), "BASS_FX.DLL")
        self.desktop.wait_for_main_window()
        wait_until(lambda: 800 in self.heard(), "sound")
        self.assertIsNone(player.poll())

    def test_an_equalizer_of_another_version_takes_one_box(self):
        copy = self.copy_of_program()
        self.make_library_of_another_version(copy / "libbass_fx.so")
        self.desktop.player(program_directory=copy)
        self.close_box(self.wait_for_box("BASS_FX.DLL"), "BASS_FX.DLL")
        self.desktop.wait_for_main_window()

    def test_a_signal_ends_the_program_while_a_box_is_open(self):
        player = self.desktop.player(program_directory=self.copy_of_program(without=["libbass_fx.so"]))
        self.wait_for_box("BASS_FX.DLL")
        player.send_signal(signal.SIGTERM)
        self.assertEqual(player.wait(20), 0)

    def test_missing_plugins_take_a_line_and_no_box(self):
        log = self.desktop.directory / "log"
        with log.open("wb") as stderr:
            self.desktop.player(program_directory=self.copy_of_program(without=["plugins"]), stderr=stderr)
        self.desktop.wait_for_main_window()
        self.assertIn("velmo: plugins missing: ", log.read_text())

    def test_plugins_of_both_folders_are_loaded_by_their_keys(self):
        copy = self.copy_of_program()
        own = self.desktop.home / "plugins"
        own.mkdir()
        for name in ("bassflac.so", "bassown.so"):
            shutil.copy(copy / "plugins" / "bassflac.so", own / name)
        (own / "bassbad.so").write_text("no library")
        (self.desktop.home / "zuvio.ini").write_text("[Plugins]\nBASSWV.SO=False\nbassopus.so=maybe\n")
        player = self.desktop.player(program_directory=copy)
        self.desktop.wait_for_main_window()
        mapped = set(re.findall(r"/\S+/bass\w+\.so$", pathlib.Path(f"/proc/{player.pid}/maps").read_text(), re.MULTILINE))
        plugins = {path for path in mapped if "/plugins/" in path}
        self.assertEqual(plugins, {str(copy / "plugins" / "bassflac.so"), str(copy / "plugins" / "bassffmpeg.so"),
                                   str(own / "bassown.so")})

    def test_without_tag_library_the_file_name_is_the_title(self):
        copy = self.copy_of_program(without=["libvelmotags.so"])
        (self.desktop.home / "zuvio.ini").write_text("[Display]\nScrollTitle=False\n")
        player = self.desktop.player(self.make("named.wav", 700, seconds=2), program_directory=copy,
                                     VELMO_AUDIO=f"wav-fast:{self.rendered}")
        wait_until(lambda: 700 in self.heard(), "sound all the same")
        wait_until(lambda: self.desktop.windows("Velmo Player - named   \\*\\*\\*   "), "the title")
        self.assertIsNone(player.poll())


class Silence(PlayerTest):
    def test_without_a_sound_device_it_plays_in_silence_and_says_so_once(self):
        log = self.desktop.directory / "log"
        with log.open("wb") as stderr:
            self.desktop.player(self.make("long.wav", 900, seconds=30), stderr=stderr, VELMO_AUDIO=None,
                                PULSE_SERVER=f"unix:{self.desktop.directory}/none")
        window = self.desktop.wait_for_main_window()
        clock = lambda: self.desktop.pixels(window, 16, 22, 101, 17)
        first = clock()
        wait_until(lambda: clock() != first, "the clock goes on")
        said = [line for line in log.read_text().splitlines() if line.startswith("velmo:")]
        self.assertEqual(len(said), 1, said)


if __name__ == "__main__":
    unittest.main()
