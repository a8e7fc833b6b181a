#!/usr/bin/env python3
"""The built player on a private desktop, driven from outside."""
import re
import shutil
import signal
import unittest

from desktop import DEMO_DIRECTORY, PROGRAM_DIRECTORY, DesktopTest, wait_until


class PlayerTest(DesktopTest):
    def clock_goes_on(self, window):
        clock = lambda: self.desktop.pixels(window, 16, 22, 101, 17)
        first = clock()
        wait_until(lambda: clock() != first, "the clock goes on")


class Playing(PlayerTest):
    def test_a_file_plays_whole_and_its_window_shows_the_title(self):
        player = self.recording_player(self.make("whole.wav", 1234, seconds=3.5))
        window = self.desktop.wait_for_main_window()
        glowing = lambda: sum(1 for red, green, blue in self.desktop.pixels(window, 122, 22, 128, 15)
                              if green > 150 and blue > 150 and red < green - 40)
        wait_until(lambda: glowing() > 30, "the title")
        wait_until(lambda: 1234 in self.heard() and self.samples()[-1] == 0, "the end")
        self.terminate(player)
        sound = self.samples()
        start = sound.index(1234)
        frames = int(3.5 * 44100)
        self.assertEqual(set(sound[start:start + frames]), {1234}, "every frame once, unchanged")
        self.assertEqual(sound.count(1234), frames)

    def test_every_piece_of_the_demo_music_opens(self):
        pieces = sorted(path for path in DEMO_DIRECTORY.iterdir() if path.suffix not in (".md", ".zvl"))
        self.assertGreaterEqual(len(pieces), 5)
        for piece in pieces:
            with self.subTest(piece.name):
                self.rendered.unlink(missing_ok=True)
                player = self.recording_player(piece)
                wait_until(self.heard, "sound")
                self.terminate(player)

    def test_the_picture_moves_while_music_plays_and_a_click_changes_its_view(self):
        self.settings.write_text("[DJ]\nMethod=2\n")  # again and again, however long this takes
        self.player(DEMO_DIRECTORY / "night-ferry.mp3")
        window = self.desktop.wait_for_main_window()
        picture = lambda: self.desktop.pixels(window, 16, 39, 100, 27)
        green = lambda: [pixel for pixel in picture() if pixel[1] > 190 and pixel[2] == 0]
        wait_until(lambda: len(green()) > 20, "bars")
        first = picture()
        wait_until(lambda: picture() != first, "they move")
        self.desktop.click(window, 60, 50)
        wait_until(lambda: "Mode=Oscilloscope" in self.settings.read_text(), "the next view is saved")
        wait_until(lambda: (255, 255, 248) in picture(), "the history with its mark")


class Instances(PlayerTest):
    def test_twenty_processes_at_once_end_as_one_player_with_all_twenty_files(self):
        files = [self.make(f"file{number}.wav", 100) for number in range(20)]
        players = [self.player(path) for path in files]
        wait_until(lambda: sum(player.poll() is None for player in players) == 1, "one player is left")
        self.assertEqual({player.poll() for player in players} - {None}, {0})
        saved = lambda: re.findall(r"#(/.*)$", self.saved_list(), re.MULTILINE)
        wait_until(lambda: sorted(saved()) == sorted(map(str, files)), lambda: f"all twenty, once each: {saved()}")

    def test_two_players_run_side_by_side_where_the_settings_allow_it(self):
        self.settings.write_text("[Options]\nAllowMultipleInstances=TRUE\n")
        players = [self.player(), self.player()]
        wait_until(lambda: len(self.desktop.main_windows()) == 2, "two windows")
        self.assertEqual([player.poll() for player in players], [None, None])


class Endings(PlayerTest):
    def test_signals_and_the_window_manager_end_the_program_in_order(self):
        endings = {number.name: lambda player, window, number=number: player.send_signal(number)
                   for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP)}
        endings["close"] = lambda player, window: self.desktop.press_key(window, "alt+F4")
        endings["imgClose"] = lambda player, window: self.desktop.click(window, 255, 8)
        place = "X=3000\r\nY=4500\r\n"
        for name, end in endings.items():
            with self.subTest(name):
                self.settings.write_text(f"[RTM]\n{place}")
                player = self.player()
                window = self.desktop.wait_for_main_window()
                wait_until(lambda: self.desktop.place(window)[:2] == (200, 300), lambda: f"{self.desktop.place(window)}")
                end(player, window)
                self.ends(player)
                saved = self.settings.read_bytes().decode()
                self.assertIn(place, saved)
                self.assertIn("State=Normal", saved)


class StartTest(PlayerTest):
    """Starts of a copy of the program, from which the test takes files away."""
    def copy_of_program(self, *without):
        copy = self.desktop.directory / "program"
        wanted = {"zuvio", "libbass.so", "libbass_fx.so", "libvelmotags.so", "plugins"} - set(without)
        shutil.copytree(PROGRAM_DIRECTORY, copy, ignore=lambda folder, names: [
            name for name in names if folder == str(PROGRAM_DIRECTORY) and name not in wanted])
        return copy

    def wait_for_box(self, title, other_than=None):
        box = wait_until(lambda: set(self.desktop.windows(title)) - {other_than}, f"box '{title}'").pop()
        self.assertFalse(self.desktop.main_windows())
        return box

    def close_box(self, box, title):
        self.desktop.press_key(box, "Return")
        wait_until(lambda: box not in self.desktop.windows(title), f"box '{title}' goes")


class FatalStarts(StartTest):
    def expect_box(self, title, **how):
        player = self.player(**how)
        self.close_box(self.wait_for_box(title), title)
        self.ends(player, status=1)

    def test_without_the_sound_library_a_box_ends_the_start(self):
        self.expect_box("BASS.DLL", program_directory=self.copy_of_program("libbass.so"))

    def test_an_output_that_cannot_be_opened_ends_the_start(self):
        self.expect_box("Error", VELMO_AUDIO="wav:/nowhere/file.wav")


class IncompleteStarts(StartTest):
    def test_without_equalizer_two_boxes_come_and_the_program_goes_on(self):
        title = "BASS_FX.DLL"
        copy = self.copy_of_program("libbass_fx.so")
        self.recording_player(self.make("sound.wav", 800), program_directory=copy)
        first = self.wait_for_box(title)
        self.close_box(first, title)
        self.close_box(self.wait_for_box(title, other_than=first), title)
        self.desktop.wait_for_main_window()
        self.hears(800)

    def test_a_signal_ends_the_program_while_a_box_is_open(self):
        player = self.player(program_directory=self.copy_of_program("libbass_fx.so"))
        self.wait_for_box("BASS_FX.DLL")
        self.terminate(player)

    def test_without_plugins_and_tag_library_a_line_is_said_and_the_file_name_is_the_title(self):
        copy = self.copy_of_program("plugins", "libvelmotags.so")
        self.settings.write_text("[Display]\nScrollTitle=False\n")
        self.recording_player(self.make("named.wav", 700, seconds=2), program_directory=copy)
        self.hears(700)
        self.desktop.wait_for_window("Velmo Player - named   \\*\\*\\*   ")
        self.assertIn("velmo: plugins missing: ", self.desktop.log.read_text())


class Silence(PlayerTest):
    def test_without_a_sound_device_it_plays_in_silence_and_says_so_once(self):
        self.player(self.make("long.wav", 900, seconds=300), VELMO_AUDIO=None,
                    PULSE_SERVER=f"unix:{self.desktop.directory}/none")
        self.clock_goes_on(self.desktop.wait_for_main_window())
        said = [line for line in self.desktop.log.read_text().splitlines() if line.startswith("velmo:")]
        self.assertEqual(len(said), 1, said)


if __name__ == "__main__":
    unittest.main()
