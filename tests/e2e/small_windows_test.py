#!/usr/bin/env python3
"""The windows of the equalizer and of the list manager, driven from outside: small_windows_test.py PROGRAM_DIRECTORY
DEMO_DIRECTORY [unittest arguments]"""
import math
import struct
import unittest
import wave

from desktop import left_samples, wait_until, write_levels
from player_test import PlayerTest


def write_sine(path, hertz, peak, seconds, rate=44100):
    """A 16-bit stereo WAV file of one tone of a whole number of cycles a second."""
    second = b"".join(struct.pack("<hh", value, value) for value in
                      (round(peak * math.sin(2 * math.pi * hertz * frame / rate)) for frame in range(rate)))
    with wave.open(str(path), "wb") as file:
        file.setnchannels(2)
        file.setsampwidth(2)
        file.setframerate(rate)
        file.writeframes(second * seconds)


class SmallWindowTest(PlayerTest):
    def settings(self):
        return (self.desktop.home / "zuvio.ini").read_text()

    def point(self, window, x, y):
        self.desktop.output("xdotool", "mousemove", "--sync", "--window", window, str(x), str(y))

    def click(self, window, x, y, button=1, times=1):
        self.point(window, x, y)
        self.desktop.output("xdotool", "click", "--repeat", str(times), "--delay", "30", str(button))

    def drag(self, window, x, first, last):
        self.point(window, x, first)
        self.desktop.output("xdotool", "mousedown", "1")
        for y in range(first + 1, last + 1):
            self.point(window, x, y)
        self.desktop.output("xdotool", "mouseup", "1")

    def place(self, window):
        lines = self.desktop.output("xdotool", "getwindowgeometry", "--shell", window).decode().splitlines()
        values = dict(line.split("=") for line in lines)
        return int(values["X"]), int(values["Y"])


class Equalizer(SmallWindowTest):
    BAR_OF_1_KHZ = 92  # pixels from the left

    def test_a_key_lights_up_under_the_pointer(self):
        self.desktop.player()
        window = self.desktop.wait_for_window("Equalizer")
        key = lambda: self.desktop.pixels(window, 203, 23, 40, 14)
        self.point(window, 120, 12)
        dark = key()
        self.point(window, 223, 29)
        wait_until(lambda: key() != dark, "it lights up")
        self.point(window, 120, 12)
        wait_until(lambda: key() == dark, "it goes out")

    def test_bars_tickers_and_keys_change_what_is_heard(self):
        tone = self.desktop.directory / "tone.wav"
        write_sine(tone, hertz=1000, peak=3000, seconds=120)
        player = self.desktop.player(tone, VELMO_AUDIO=f"wav:{self.rendered}")
        window = self.desktop.wait_for_window("Equalizer")
        manager = self.desktop.wait_for_window("ListManager")

        def expect(decibels, what):
            peak = lambda: max(left_samples(self.rendered)[-4410:], default=0)
            wanted = 3000 * 10 ** (decibels / 20)
            wait_until(lambda: abs(peak() - wanted) < 0.03 * wanted, lambda: f"{what}: {wanted}; it is {peak()}")

        expect(0, "flat")
        self.click(window, self.BAR_OF_1_KHZ, 25)
        expect(10, "the bar's top")
        self.drag(window, self.BAR_OF_1_KHZ, 28, 51)
        expect(0, "the ticker back in the middle")
        self.click(window, self.BAR_OF_1_KHZ, 74)
        expect(-10, "the bar's end")
        self.click(window, 223, 29)
        expect(0, "switched off")
        self.assertIn("EQEnabled=False", self.settings())
        self.click(window, 223, 29)
        expect(-10, "and on")
        self.assertIn("EQEnabled=True", self.settings())
        self.click(window, 223, 44)
        expect(0, "reset")

        below = self.place(window)
        self.click(window, 255, 8)
        wait_until(lambda: not self.desktop.windows("Equalizer"), "it closes")
        wait_until(lambda: self.place(manager) == below, "the manager takes its place")
        player.terminate()
        self.assertEqual(player.wait(20), 0)
        self.assertIn("ShowFX=False", self.settings())
        self.assertEqual((self.desktop.home / "zuvio.zfx").read_bytes(), b"ZVFX10\r\n" + b" 700 \r\n" * 11)


class Manager(SmallWindowTest):
    def setUp(self):
        super().setUp()
        lists = self.desktop.home / "lists"
        lists.mkdir()
        self.internal = self.desktop.home / "list.zvl"
        self.internal.write_bytes(b"#ZVL20#Internal playlist\r\n")
        self.rock = lists / "list0.zvl"
        sound = self.make("rock.wav", 100, seconds=2)
        self.entries = f"rock\r\n2#{sound}\r\n".encode()
        self.rock.write_bytes(b"#ZVL20#Rock\r\n" + self.entries)
        (lists / "list1.zvl").write_bytes(b"#ZVL20#Jazz\r\n")

    def key(self, *names):
        self.desktop.output("xdotool", "key", "--delay", "30", *names)

    def row(self, window, number, **how):
        self.click(window, 60, 19 + 16 * (number - 1) + 8, **how)

    def player_windows(self):
        return len(self.desktop.output("xdotool", "search", "--onlyvisible", "--class", "velmo-player").split())

    def test_lists_are_opened_renamed_and_removed(self):
        self.desktop.player()
        window = self.desktop.wait_for_window("ListManager")
        self.row(window, 3, times=2)
        wait_until(lambda: self.entries in self.internal.read_bytes(), "the list is open")

        shown = self.player_windows()
        self.row(window, 3, button=3)
        wait_until(lambda: self.player_windows() == shown + 1, "the menu")
        self.key("Up", "Up", "Return")
        wait_until(lambda: self.player_windows() == shown, "the menu goes")
        self.desktop.output("xdotool", "type", "--delay", "30", "Old rock")
        self.key("Return")
        wait_until(lambda: self.rock.read_bytes() == b"#ZVL20#Old rock\r\n" + self.entries,
                   lambda: f"the new title: {self.rock.read_bytes()}")
        self.key("Delete")
        wait_until(lambda: not self.rock.exists(), "the next key is heard again")

        self.row(window, 1)
        self.key("Delete", "F5")
        self.click(window, 255, 8)
        wait_until(lambda: not self.desktop.windows("ListManager"), "it closes")
        wait_until(lambda: "ShowPLMGR=False" in self.settings(), "and stays away")
        self.assertTrue(self.internal.exists(), "the internal list can't be removed")


if __name__ == "__main__":
    unittest.main()
