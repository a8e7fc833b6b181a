#!/usr/bin/env python3
"""The icon in both kinds of tray, the colours of the desktop, and Wayland, with the built player:
session_test.py PROGRAM_DIRECTORY DEMO_DIRECTORY [unittest arguments]"""
import os
import pathlib
import re
import subprocess
import sys
import unittest

from desktop import Desktop, wait_until

PROGRAM_DIRECTORY = pathlib.Path(sys.argv.pop(1))
sys.argv.pop(1)  # the demo music is for the other scripts
# What the toolkit loads for these sessions leaks a little at its end, in code of others.
FOREIGN_LEAKS = {"ASAN_OPTIONS": "detect_leaks=0"}
MENU_LABELS = ["Minimize", "Restore", "Close"]


class TrayTest(unittest.TestCase):
    def setUp(self):
        self.desktop = Desktop(PROGRAM_DIRECTORY)
        self.addCleanup(self.desktop.close)
        self.settings = self.desktop.home / "zuvio.ini"
        self.settings.write_text("[Display]\nShowIn=Taskbar and System Tray\n")

    def end(self, process):
        process.terminate()
        process.wait(20)


class Panel(TrayTest):
    def start_panel(self):
        configuration = self.desktop.directory / "tint2rc"
        configuration.write_text("panel_items = S\npanel_size = 100% 30\nsystray_padding = 0 4 5\n")
        return self.desktop.start(["tint2", "-c", str(configuration)])

    def icon(self):
        """The icon's window, once it is shown."""
        tree = self.desktop.output("xwininfo", "-root", "-tree").decode()
        found = re.search(r'(0x[0-9a-f]+) "velmo-player": .* 22x22', tree)
        return found and found[1]

    def click(self, icon, place, *clicks):
        """At places that lie apart two clicks are no double click."""
        self.desktop.output("xdotool", "mousemove", "--window", icon, str(place), str(place), *clicks)

    def menus(self):
        """The pop-up menus that are shown."""
        tree = self.desktop.output("xwininfo", "-root", "-tree").decode()
        windows = re.findall(r'(0x[0-9a-f]+) "velmo-player": .*?  (\d+)x\d+\+', tree)
        return [window for window, width in windows
                if int(width) > 30 and b"IsViewable" in self.desktop.output("xwininfo", "-id", window)]

    def is_minimised(self, window):
        return b"Iconic" in self.desktop.output("xprop", "-id", window, "WM_STATE")

    def test_icon_comes_with_the_panel_and_again_with_the_next_one(self):
        player = self.desktop.player()
        window = self.desktop.wait_for_main_window()
        self.assertIsNone(self.icon())
        panel = self.start_panel()
        wait_until(self.icon, "the icon")
        self.end(panel)
        wait_until(lambda: not self.icon(), "it goes with the panel")
        self.start_panel()
        icon = wait_until(self.icon, "it is back")

        # A double click leaves all as it is; what the menu says is done.
        self.click(icon, 11, "click", "--repeat", "2", "--delay", "50", "1")
        self.click(icon, 3, "click", "3")
        wait_until(self.menus, "the menu")
        self.assertFalse(self.is_minimised(window))
        self.desktop.output("xdotool", "key", "Down", "Return")
        wait_until(lambda: self.is_minimised(window), "minimised by the menu")
        wait_until(lambda: not self.menus(), "the menu has gone")
        self.click(icon, 19, "click", "3")
        wait_until(self.menus, "the menu")
        self.desktop.output("xdotool", "key", "Down", "Return")  # the first entry that can be chosen
        wait_until(lambda: not self.is_minimised(window), "restored by the menu")
        wait_until(lambda: not self.menus(), "the menu has gone")
        self.click(icon, 3, "click", "3")
        wait_until(self.menus, "the menu")
        self.desktop.output("xdotool", "key", "Up", "Return")
        self.assertEqual(player.wait(20), 0, "closed by the menu")
        wait_until(lambda: not self.icon(), "the icon goes")


class BusTest(TrayTest):
    def setUp(self):
        super().setUp()
        reading, writing = os.pipe()
        self.desktop.start(["dbus-daemon", "--session", "--nofork", f"--print-address={writing}"], pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading) as answer:
            self.address = answer.readline().strip()
        self.log = self.desktop.directory / "service.log"

    def environment(self):
        return self.desktop.environment(DBUS_SESSION_BUS_ADDRESS=self.address)

    def start_service(self, name):
        self.log.unlink(missing_ok=True)
        return self.desktop.start(["/usr/bin/python3", "-m", "dbusmock", "--session", "-l", str(self.log), "--template",
                                   str(pathlib.Path(__file__).with_name(name))], environment=self.environment())

    def call(self, destination, path, method, *arguments):
        done = subprocess.run(["gdbus", "call", "--session", "-d", destination, "-o", path, "-m", method, *arguments],
                              env=self.environment(), capture_output=True, text=True)
        return done.stdout


class Bus(BusTest):
    def start_watcher(self):
        return self.start_service("status_notifier_watcher.py")

    def item(self):
        """The bus name of the icon that has registered last."""
        found = re.findall(r'RegisterStatusNotifierItem "(.*?)"', self.log.read_text()) if self.log.exists() else []
        return found and found[-1]

    def entries(self, item):
        """The menu as the tray sees it: the labels of what can be chosen."""
        self.call(item, "/MenuBar", "com.canonical.dbusmenu.AboutToShow", "0")
        layout = self.call(item, "/MenuBar", "com.canonical.dbusmenu.GetLayout", "0", "--", "-1", "[]")
        entries = re.findall(r"<\((\d+), \{(.*?)\}", layout)
        return {re.search(r"'label': <'(.*?)'>", text)[1].replace("_", ""): int(number) for number, text in entries
                if "'label'" in text and "'enabled': <false>" not in text}

    def choose(self, item, entry):
        self.call(item, "/MenuBar", "com.canonical.dbusmenu.Event", str(entry), "clicked", "<''>", "0")

    def test_icon_comes_with_the_watcher_and_shows_its_menu_through_it(self):
        player = self.desktop.player(DBUS_SESSION_BUS_ADDRESS=self.address, **FOREIGN_LEAKS)
        window = self.desktop.wait_for_main_window()
        watcher = self.start_watcher()
        wait_until(self.item, "the icon")
        self.end(watcher)
        self.start_watcher()
        item = wait_until(self.item, "the icon at the next watcher")
        tip = self.call(item, "/StatusNotifierItem", "org.freedesktop.DBus.Properties.Get", "org.kde.StatusNotifierItem",
                        "ToolTip")
        self.assertIn("'Velmo Player'", tip)
        self.assertEqual(list(self.entries(item)), ["Minimize", "Close"])
        minimised = lambda: b"Iconic" in self.desktop.output("xprop", "-id", window, "WM_STATE")
        self.choose(item, self.entries(item)["Minimize"])
        wait_until(minimised, "minimised")
        wait_until(lambda: list(self.entries(item)) == ["Restore", "Close"], "the menu follows")
        self.choose(item, self.entries(item)["Restore"])
        wait_until(lambda: not minimised(), "restored")
        self.choose(item, self.entries(item)["Close"])
        self.assertEqual(player.wait(20), 0)


class Colours(BusTest):
    def test_dialogs_are_as_dark_as_the_desktop(self):
        portal = "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop"
        self.start_service("settings_portal.py")
        wait_until(lambda: "uint32 1" in self.call(*portal, "org.freedesktop.portal.Settings.Read", "", ""), "the portal")
        sound = self.desktop.directory / "text.mp3"
        sound.write_text("no sound at all\n" * 100)
        self.desktop.player(sound, DBUS_SESSION_BUS_ADDRESS=self.address)
        report = wait_until(self.report, "the error window")
        ground = lambda: sum(self.desktop.pixels(report, 2, 2, 1, 1)[0])
        wait_until(lambda: 60 < ground() < 250, "dark ground")
        self.call(*portal, "org.freedesktop.DBus.Mock.AddMethod", "org.freedesktop.portal.Settings", "Read", "ss", "v",
                  "ret = dbus.UInt32(2, variant_level=1)")
        self.call(*portal, "org.freedesktop.DBus.Mock.EmitSignal", "org.freedesktop.portal.Settings", "SettingChanged", "s",
                  "[<'org.freedesktop.appearance'>]")
        wait_until(lambda: ground() > 600, "light ground")

    def report(self):
        """The error window, by its size."""
        for window in self.desktop.output("xdotool", "search", "--onlyvisible", "--class", "velmo-player").decode().split():
            if b"WIDTH=340\nHEIGHT=140\n" in self.desktop.output("xdotool", "getwindowgeometry", "--shell", window):
                return window
        return None


class Wayland(TrayTest):
    def test_all_windows_show_where_there_is_no_x_server(self):
        runtime = self.desktop.directory / "wayland"
        runtime.mkdir(mode=0o700)
        surroundings = {"XDG_RUNTIME_DIR": str(runtime), "WAYLAND_DISPLAY": "wayland-test", "DISPLAY": None}
        self.desktop.start(["weston", "--backend=headless-backend.so", "--socket=wayland-test", "--idle-time=0"],
                           environment=self.desktop.environment(**surroundings))
        wait_until((runtime / "wayland-test").exists, "the compositor")
        log = self.desktop.directory / "protocol.log"
        with log.open("w") as stderr:
            player = self.desktop.player(stderr=stderr, WAYLAND_DEBUG="1", **surroundings, **FOREIGN_LEAKS)
        titles = lambda: set(re.findall(r'-> xdg_toplevel@(\d+)\.set_title', log.read_text()))
        drawn = lambda: set(re.findall(r"-> (wl_surface@\d+)\.attach\(wl_buffer", log.read_text()))
        wait_until(lambda: len(titles()) == 4 and len(drawn()) >= 4, "four windows with their pictures")
        self.assertEqual(log.read_text().count("velmo: no X server here"), 1)
        player.terminate()
        self.assertEqual(player.wait(20), 0)


if __name__ == "__main__":
    unittest.main()
