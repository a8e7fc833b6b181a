#!/usr/bin/env python3
"""The icon in both kinds of tray, the colours of the desktop, and Wayland, with the built player."""
import pathlib
import re
import socket
import unittest

from desktop import PATIENCE, DesktopTest, wait_until


class TrayTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.settings.write_text("[Display]\nShowIn=Taskbar and System Tray\n")

    def end(self, process):
        process.terminate()
        process.wait(PATIENCE)


class Panel(TrayTest):
    def start_panel(self):
        configuration = self.desktop.directory / "tint2rc"
        configuration.write_text("panel_items = S\npanel_size = 100% 30\nsystray_padding = 0 4 5\n")
        return self.desktop.start(["tint2", "-c", str(configuration)])

    def icon(self):
        """The icon's window, once it is shown in the panel."""
        found = re.search(r'(0x[0-9a-f]+) "velmo-player": .* 22x22', self.desktop.output("xwininfo", "-root", "-tree"))
        return found[1] if found and "IsViewable" in self.desktop.output("xwininfo", "-id", found[1]) else None

    def click(self, icon, place, *clicks):
        """At places that lie apart two clicks are no double click."""
        self.desktop.xdo("mousemove", "--window", icon, place, place, "click", *clicks)

    def choose(self, icon, place, entry):
        """An entry of the icon's menu: 0 is the first, -1 the last. By the mouse, since the keys may be another window's until
        the menu has taken them."""
        windows = set(self.desktop.player_windows())
        menus = lambda: set(self.desktop.player_windows()) - windows
        self.click(icon, place, 3)
        menu = wait_until(menus, "the menu").pop()
        height = self.desktop.place(menu)[3]
        self.desktop.click(menu, 20, 12 if entry == 0 else height - 12)
        wait_until(lambda: not menus(), "the menu has gone")

    def test_icon_comes_with_the_panel_and_again_with_the_next_one(self):
        player = self.player()
        window = self.desktop.wait_for_main_window()
        self.assertIsNone(self.icon())
        panel = self.start_panel()
        wait_until(self.icon, "the icon")
        self.end(panel)
        wait_until(lambda: not self.icon(), "it goes with the panel")
        self.start_panel()
        icon = wait_until(self.icon, "it is back")

        self.click(icon, 11, "--repeat", 2, "--delay", 50, 1)  # a double click leaves all as it is
        self.choose(icon, 3, 0)
        wait_until(lambda: self.desktop.is_minimised(window), "minimised by the menu")
        self.choose(icon, 19, -1)
        self.ends(player)
        wait_until(lambda: not self.icon(), "the icon goes")


class BusTest(TrayTest):
    def setUp(self):
        super().setUp()
        self.address = self.desktop.start_and_read(["dbus-daemon", "--session", "--nofork", "--print-address={}"])
        self.service_log = self.desktop.directory / "service.log"

    def start_service(self, name):
        self.service_log.unlink(missing_ok=True)
        return self.desktop.start(["/usr/bin/python3", "-m", "dbusmock", "--session", "-l", str(self.service_log), "--template",
                                   str(pathlib.Path(__file__).with_name(name))],
                                  self.desktop.environment(DBUS_SESSION_BUS_ADDRESS=self.address))

    def call(self, destination, path, method, *arguments):
        return self.desktop.output("env", f"DBUS_SESSION_BUS_ADDRESS={self.address}", "gdbus", "call", "--session",
                                   "-d", destination, "-o", path, "-m", method, *arguments)


class Bus(BusTest):
    def start_watcher(self):
        """The watcher, and the bus name of the icon that registers there."""
        watcher = self.start_service("status_notifier_watcher.py")
        registered = lambda: self.service_log.exists() and re.search(
            r'RegisterStatusNotifierItem "(.*?)"', self.service_log.read_text())
        return watcher, wait_until(registered, "the icon")[1]

    def entries(self):
        """The menu as the tray sees it: what can be chosen, with its number."""
        self.call(self.item, "/MenuBar", "com.canonical.dbusmenu.AboutToShow", "0")
        layout = self.call(self.item, "/MenuBar", "com.canonical.dbusmenu.GetLayout", "0", "--", "-1", "[]")
        entries = re.findall(r"<\((\d+), \{(.*?)\}", layout)
        return {re.search(r"'label': <'(.*?)'>", text)[1].replace("_", ""): number for number, text in entries
                if "'label'" in text and "'enabled': <false>" not in text}

    def choose(self, label):
        self.call(self.item, "/MenuBar", "com.canonical.dbusmenu.Event", self.entries()[label], "clicked", "<''>", "0")

    def test_icon_comes_with_the_watcher_and_shows_its_menu_through_it(self):
        player = self.player(DBUS_SESSION_BUS_ADDRESS=self.address)
        window = self.desktop.wait_for_main_window()
        self.end(self.start_watcher()[0])
        _, self.item = self.start_watcher()
        tip = self.call(self.item, "/StatusNotifierItem", "org.freedesktop.DBus.Properties.Get", "org.kde.StatusNotifierItem",
                        "ToolTip")
        self.assertIn("'Velmo Player'", tip)
        self.assertEqual(list(self.entries()), ["Minimize", "Close"])
        self.choose("Minimize")
        wait_until(lambda: self.desktop.is_minimised(window), "minimised")
        wait_until(lambda: list(self.entries()) == ["Restore", "Close"], "the menu follows")
        self.choose("Restore")
        wait_until(lambda: not self.desktop.is_minimised(window), "restored")
        self.choose("Close")
        self.ends(player)


class Colours(BusTest):
    def test_dialogs_are_as_dark_as_the_desktop(self):
        portal = "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop"
        self.start_service("settings_portal.py")
        wait_until(lambda: "uint32 1" in self.call(*portal, "org.freedesktop.portal.Settings.Read", "", ""), "the portal")
        text = self.desktop.directory / "text.mp3"
        text.write_text("no sound at all\n" * 100)
        self.player(text, DBUS_SESSION_BUS_ADDRESS=self.address)
        report = wait_until(lambda: self.desktop.windows_of_size((340, 140)), "the error window")[0]
        ground = lambda: sum(self.desktop.pixels(report, 2, 2, 1, 1)[0])
        wait_until(lambda: 60 < ground() < 250, "dark ground")
        self.call(*portal, "org.freedesktop.DBus.Mock.AddMethod", "org.freedesktop.portal.Settings", "Read", "ss", "v",
                  "ret = dbus.UInt32(2, variant_level=1)")
        self.call(*portal, "org.freedesktop.DBus.Mock.EmitSignal", "org.freedesktop.portal.Settings", "SettingChanged", "s",
                  "[<'org.freedesktop.appearance'>]")
        wait_until(lambda: ground() > 600, "light ground")


class Wayland(TrayTest):
    def listens(self, path):
        with socket.socket(socket.AF_UNIX) as client:
            return client.connect_ex(str(path)) == 0

    def test_all_windows_show_where_there_is_no_x_server(self):
        runtime = self.desktop.directory / "wayland"
        runtime.mkdir(mode=0o700)
        surroundings = {"XDG_RUNTIME_DIR": str(runtime), "WAYLAND_DISPLAY": "wayland-test", "DISPLAY": None}
        self.desktop.start(["weston", "--backend=headless-backend.so", "--socket=wayland-test", "--idle-time=0"],
                           self.desktop.environment(**surroundings))
        wait_until(lambda: self.listens(runtime / "wayland-test"), "the compositor")
        player = self.player(WAYLAND_DEBUG="1", **surroundings)
        told = lambda what: set(re.findall(what, self.desktop.log.read_text()))
        wait_until(lambda: len(told(r"-> xdg_toplevel@(\d+)\.set_title")) == 4
                   and len(told(r"-> (wl_surface@\d+)\.attach\(wl_buffer")) >= 4, "four windows with their pictures")
        self.assertEqual(self.desktop.log.read_text().count("velmo: no X server here"), 1)
        self.terminate(player)


if __name__ == "__main__":
    unittest.main()
