#!/usr/bin/env python3
"""Files dragged from another program into the built player."""
import pathlib
import unittest

from desktop import PATIENCE, DesktopTest, wait_until

SOURCE = pathlib.Path(__file__).with_name("drag_source.py")
ROWS = (100, 60)  # a place on the list of either window


class Drops(DesktopTest):
    def drop(self, title, *paths):
        said = self.desktop.directory / "said"
        with said.open("w") as stderr:
            source = self.desktop.start(["/usr/bin/python3", str(SOURCE), *map(str, paths)], stderr=stderr)
        says = lambda word: word in said.read_text()
        window = self.desktop.wait_for_window("Files")
        self.desktop.xdo("windowmove", "--sync", window, 900, 700)
        self.desktop.point(window, 50, 50, "mousedown", 1)
        self.desktop.point(window, 80, 80)
        target = self.desktop.wait_for_window(title)

        def is_welcome():
            """Moves may be lost before the drag has begun."""
            self.desktop.point(target, *ROWS)
            self.desktop.point(target, ROWS[0] + 1, ROWS[1])
            return says("accepted")

        wait_until(is_welcome, "the list would take the files")
        self.desktop.xdo("mouseup", 1)
        wait_until(lambda: says("ended"), "the drag ends")
        source.terminate()
        source.wait(PATIENCE)

    def test_files_and_folders_reach_the_playlist_and_lists_the_store(self):
        folder = self.make("music & 100% #1/b.wav", 100).parent
        self.make(f"{folder.name}/ä.wav", 100)
        single = self.make("single.wav", 100)
        stored = self.desktop.directory / "evening.zvl"
        stored.write_text("#ZVL20#Evening\r\nSong\r\n200#/music/song.mp3\r\n")
        self.settings.write_text("[RTM]\nX=1500\nY=1500\nShowPL=True\nShowPLMGR=True\n")
        player = self.player()
        self.desktop.wait_for_main_window()
        self.drop("Playlist", folder, single)
        self.drop("ListManager", stored, single)
        copies = lambda: [path.read_text() for path in self.desktop.home.glob("lists/*.zvl")]
        wait_until(lambda: copies() == [stored.read_text()], lambda: f"the list is in the store: {copies()}")
        self.terminate(player)
        names = [line.rsplit("/", 1)[-1] for line in self.saved_list().splitlines() if "#/" in line]
        self.assertEqual(names, ["b.wav", "ä.wav", "single.wav"])


if __name__ == "__main__":
    unittest.main()
