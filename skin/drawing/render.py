"""Makes pixels of the drawings: each list is one sheet, rendered once a scale and cut into its pictures."""
import subprocess

from . import png
from .lists import LISTS
from .palette import BLACK, EDGE
from .svg import Drawing

SCALES = (1, 2, 3)
HOLE = b"\0\0\0"


def render_svg(text, scale):
    """(width, height, channels, rows) of a drawing, by librsvg's converter."""
    done = subprocess.run(["rsvg-convert", "--zoom", str(scale), "--format", "png"], input=text.encode(),
                          capture_output=True, check=True)
    return png.read(done.stdout)


def _sheet(table):
    """A drawing that holds all pictures of a list, and the place of each."""
    sheet_width = max(picture.size[0] for picture in table.values())
    places, x, y, row = {}, 0, 0, 0
    for index, picture in sorted(table.items(), key=lambda item: (-item[1].size[1], item[0])):
        width, height = picture.size
        if x + width > sheet_width:
            x, y, row = 0, y + row + 2, 0
        places[index] = (x, y)
        x, row = x + width + 2, max(row, height)
    drawing = Drawing(sheet_width, y + row)
    for index, (left, top) in places.items():
        drawing.put_cut(left, top, *table[index].size, table[index].draw)
    return drawing, places


def colour_bytes(colour):
    return bytes.fromhex(colour[1:])


def _over(row, under):
    """RGBA pixels over RGB ones."""
    out = bytearray(under)
    for i in range(len(row) // 4):
        alpha = row[4 * i + 3]
        if alpha == 255:
            out[3 * i:3 * i + 3] = row[4 * i:4 * i + 3]
        elif alpha:
            for k in range(3):
                out[3 * i + k] = (row[4 * i + k] * alpha + under[3 * i + k] * (255 - alpha) + 127) // 255
    return out


def _without_black(row):
    """Black that is seen is a little lighter than a hole."""
    black = colour_bytes(BLACK)
    place = row.find(HOLE)
    while place >= 0:
        if place % 3 == 0:
            row[place:place + 3] = black
        place = row.find(HOLE, place + 1)
    return row


def _holes(rows):
    """Which pixels of a background at scale 1 are outside of its outline: those less than half covered."""
    return [[alpha < 128 for alpha in row[3::4]] for row in rows]


def _punch(row, holes, scale):
    for x, hole in enumerate(holes):
        if hole:
            row[3 * x * scale:3 * (x + 1) * scale] = HOLE * scale
    return row


class Renderer:
    """Renders whole lists, and keeps what later ones stand on."""

    def __init__(self):
        self._done, self._outlines = {}, {}

    def pictures(self, name, scale):
        """{index: (width, height, rows of RGB)} of a list at a scale."""
        if (name, scale) not in self._done:
            self._done[name, scale] = self._render(name, scale)
        return self._done[name, scale]

    def _render(self, name, scale):
        table = LISTS[name]
        sheet, places = _sheet(table)
        _, _, _, pixels = render_svg(sheet.svg(), scale)
        if any(picture.hole for picture in table.values()) and name not in self._outlines:
            _, _, _, plain = (0, 0, 0, pixels) if scale == 1 else render_svg(sheet.svg(), 1)
            self._outlines[name] = _holes(_cut(plain, *places[1], *table[1].size))
        done = {}
        for index in sorted(table):
            picture = table[index]
            left, top, width, height = (scale * value for value in (*places[index], *picture.size))
            rows = _cut(pixels, left, top, width, height)
            done[index] = (width, height, self._opaque(name, picture, rows, scale, done))
        return done

    def _opaque(self, name, picture, rows, scale, done):
        under = self._ground(name, picture, scale, done)
        rows = [_without_black(_over(row, ground)) for row, ground in zip(rows, under)]
        if picture.hole:
            outline = self._outlines[name]
            rows = [_punch(row, outline[y // scale], scale) for y, row in enumerate(rows)]
        return [bytes(row) for row in rows]

    def _ground(self, name, picture, scale, done):
        width, height = (scale * value for value in picture.size)
        if not picture.ground:
            return [colour_bytes(EDGE if picture.hole else BLACK) * width] * height
        owner, x, y = picture.ground
        background = done[1] if owner == name else self.pictures(owner, scale)[1]
        shown = [scale * value for value in picture.shown or picture.size]
        piece = [row[3 * x * scale:3 * (x * scale + shown[0])]
                 for row in background[2][y * scale:y * scale + shown[1]]]
        return _stretched(piece, *shown, width, height)


def _stretched(rows, width, height, to_width, to_height):
    """RGB rows at another size; each pixel is the nearest one."""
    if (width, height) == (to_width, to_height):
        return rows
    columns = [(2 * x + 1) * width // (2 * to_width) for x in range(to_width)]
    return [b"".join(rows[(2 * y + 1) * height // (2 * to_height)][3 * x:3 * x + 3] for x in columns)
            for y in range(to_height)]


def _cut(rows, left, top, width, height):
    return [row[4 * left:4 * (left + width)] for row in rows[top:top + height]]
