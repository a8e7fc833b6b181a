"""What the windows must look like: the skin's pictures, put together by the tables of this file and by nothing of the program's."""
import functools
import pathlib
import subprocess


class Bitmap:
    """Pixels as a row of (red, green, blue) a line."""

    def __init__(self, width, height, data):
        self.width, self.height = width, height
        self.rows = [bytearray(data[3 * width * y:3 * width * (y + 1)]) for y in range(height)]

    @staticmethod
    def read(path):
        size = subprocess.run(["identify", "-format", "%w %h", str(path)], capture_output=True, check=True).stdout
        width, height = map(int, size.split())
        data = subprocess.run(["convert", str(path), "-depth", "8", "rgb:-"], capture_output=True, check=True).stdout
        return Bitmap(width, height, data)

    def put(self, other, left, top, width, height):
        """`other` from its upper left corner on, cut to that box."""
        for y in range(min(height, other.height)):
            line = other.rows[y][:3 * min(width, other.width)]
            self.rows[top + y][3 * left:3 * left + len(line)] = line

    def part(self, left, top, width, height):
        return Bitmap(width, height, b"".join(row[3 * left:3 * (left + width)] for row in self.rows[top:top + height]))

    def difference(self, other):
        """How far two pictures of one size differ: the share of their pixels in which a colour is off by more than a hair."""
        assert (self.width, self.height) == (other.width, other.height)
        hair = 6
        off = 0
        for own, its in zip(self.rows, other.rows):
            if own != its:
                off += sum(1 for x in range(0, len(own), 3)
                           if max(abs(own[x + i] - its[x + i]) for i in range(3)) > hair)
        return off / (self.width * self.height)


class Key:
    """A control with three pictures: its box in pixels, and its places in a list of pictures."""

    def __init__(self, left, top, width, height, pictures, normal, pressed=None, hover=None):
        self.box = (left, top, width, height)
        self.middle = (left + width // 2, top + height // 2)
        self.pictures = pictures
        self.states = {"normal": normal, "pressed": pressed or normal + 1, "hover": hover or normal + 2}


TRANSPORT = {name: Key(16 + 28 * place, 90, 28, 28, "wmain", first) for place, (name, first) in enumerate(
    [("imgBack", 38), ("imgPlay", 35), ("imgPause", 29), ("imgStop", 41), ("imgOpen", 26), ("imgNext", 23)])}
WINDOW_KEYS = {name: Key(16 + 40 * place, 128, 33, 33, "wmain", first) for place, (name, first) in enumerate(
    [("imgShowPL", 32), ("imgShowListMgr", 20), ("imgShowFX", 11), ("imgShowDJ", 8), ("imgShowOptions", 5)])}

# Of each window: size, list of its ground, keys, and the parts that show more than pictures.
WINDOWS = {
    "wmain": ((265, 177), "wmain",
              {**TRANSPORT, **WINDOW_KEYS,
               "imgK": Key(224, 90, 28, 28, "wmain", 17),
               "imgSoundVolume": Key(122, 40, 25, 25, "wmain", 14),
               "imgMinimize": Key(233, 2, 13, 12, "wnd", 4),
               "imgClose": Key(249, 2, 13, 12, "wnd", 1)},
              [(16, 22, 102, 45), (122, 22, 129, 45), (15, 72, 235, 11), (8, 8, 6, 6)]),
    "fX": ((265, 97), "fx",
           {"btnState": Key(203, 23, 40, 14, "fx", 5),
            "btnReset": Key(203, 37, 40, 14, "fx", 14),
            "btnLoad": Key(203, 53, 40, 14, "fx", 11),
            "btnSave": Key(203, 69, 40, 14, "fx", 17),
            "imgCaptionClose": Key(249, 2, 13, 12, "wnd", 1)},
           [(24, 24, 176, 52)]),
    "Playlist": ((314, 490), "pl",
                 {"imgOpen": Key(14, 471, 32, 16, "pl", 5, 6, 19),
                  "imgOrder": Key(48, 471, 32, 16, "pl", 20, 24, 25),
                  "imgSave": Key(82, 471, 32, 16, "pl", 32),
                  "imgClear": Key(268, 471, 32, 16, "pl", 2),
                  "maincapclose": Key(298, 2, 13, 12, "wnd", 1)},
                 [(14, 19, 286, 448)]),
    "frmListMGR": ((265, 138), "listmgr",
                   {"imgClose": Key(249, 2, 13, 12, "wnd", 1)},
                   [(14, 19, 237, 112)]),
}

# The keys of the playlist's pop-outs, and the key that lets each out.
POP_OUTS = {
    "imgOpen": {"imgOpenList": Key(14, 406, 54, 16, "pl", 10),
                "imgOpenDirectory": Key(14, 422, 54, 16, "pl", 7),
                "imgOpenLocation": Key(14, 438, 54, 16, "pl", 13),
                "imgOpenMedia": Key(14, 454, 54, 16, "pl", 16)},
    "imgOrder": {"imgOrderAZ": Key(48, 422, 54, 16, "pl", 21),
                 "imgOrderZA": Key(48, 438, 54, 16, "pl", 29),
                 "imgOrderRandom": Key(48, 454, 54, 16, "pl", 26)},
}


class Skin:
    def __init__(self, directory):
        self.directory = pathlib.Path(directory)

    @functools.lru_cache(maxsize=None)
    def picture(self, name, index):
        return Bitmap.read(self.directory / name / f"{index}@1x.png")

    def key(self, key, state):
        """The key in that state, cut to its box."""
        return self.picture(key.pictures, key.states[state]).part(0, 0, *key.box[2:])

    def window(self, name):
        """The window at rest."""
        size, ground, keys, _ = WINDOWS[name]
        picture = self.picture(ground, 1).part(0, 0, *size)
        for key in keys.values():
            picture.put(self.key(key, "normal"), *key.box)
        return picture
