"""The program's icon: the mark on black glass in a body of metal. Each small size is drawn for its own pixels."""
from dataclasses import dataclass

from .palette import BLACK, CYAN, EDGE
from .symbols import mark


@dataclass
class Grid:
    """Where things lie in an icon of one size, in its own pixels."""
    margin: int
    pane: int           # inset of the glass
    unit: float         # of the mark, which is 12 x 11 units
    top: float          # of the mark
    glow: bool = False
    spectrum: bool = False


GRIDS = {
    16: Grid(0, 2, 0, 0),       # its mark is drawn pixel by pixel
    24: Grid(1, 3, 7 / 6, 6),
    32: Grid(1, 4, 5 / 3, 7),
    48: Grid(2, 8, 29 / 12, 11, glow=True),
    64: Grid(2, 10, 10 / 3, 14, glow=True),
    128: Grid(4, 20, 6, 30, glow=True, spectrum=True),
    256: Grid(8, 40, 12, 60, glow=True, spectrum=True),
    512: Grid(16, 80, 24, 120, glow=True, spectrum=True),
}

# Rows of the smallest mark's left arm: (first column, width); the right arm mirrors it.
SMALL_MARK = {4: (3, 3), 5: (3, 3), 6: (4, 2), 7: (4, 3), 8: (5, 2), 9: (5, 3), 10: (6, 2), 11: (6, 2), 12: (7, 1)}
# Bars beside the foot of the mark: (x, height) in 128ths, standing on 96.
SPECTRUM = ((25, 14), (33, 26), (41, 36), (81, 31), (89, 22), (97, 11))


def icon(d, size):
    grid = GRIDS[size]
    line = max(1, round(size / 48))
    _body(d, size, grid.margin, line)
    _pane(d, size, grid, line)
    left = d.linear(0, size * .25, 0, size * .75, (0, "#b4fcff"), (1, "#35dcea"))
    right = d.linear(0, size * .25, 0, size * .75, (0, "#2fd3e2"), (1, "#0c8391"))
    if grid.spectrum:
        _spectrum(d, size, grid)
    if grid.unit:
        mark(d, size / 2, grid.top, left, right, grid.unit)
        return
    for y, (x, width) in SMALL_MARK.items():
        d.rect(x, y, width, 1, left)
        d.rect(size - x - width, y, width, 1, right)


def _body(d, size, margin, line):
    width = size - 2 * margin
    radius = width * .24
    d.rect(margin, margin, width, width, EDGE, radius)
    inner = (margin + line, margin + line, width - 2 * line, width - 2 * line)
    d.rect(*inner, d.linear(0, margin, size, size, (0, "#6a727d"), (.4, "#3c4249"), (1, "#212429")), radius - line)
    d.ring(*inner, radius - line, d.linear(0, 0, size, size, (0, "#dfe6ee", .85), (.4, "#9aa3ae", .3), (.7, "#000", .1),
                                           (1, "#000", .5)), line)


def _pane(d, size, grid, line):
    at, width = grid.pane, size - 2 * grid.pane
    radius = width * .22
    if size > 16:
        d.ring(at - line, at - line, width + 2 * line, width + 2 * line, radius + line,
               d.linear(0, 0, size, size, (0, "#000", .8), (.5, "#000", .4), (1, "#c3ccd6", .5)), line)
    d.rect(at, at, width, width, BLACK, radius)
    if grid.glow:
        c = size / 2
        d.disc(c, c, size * .34, d.radial(c, c, size * .34, (0, CYAN, .22), (1, CYAN, 0)))
        d.path(f"M{at + size * .07} {at + line / 2}H{size - at - size * .07}", line=line, stroke=d.linear(
            at, 0, size - at, 0, (0, "#9fd8e6", .05), (.25, "#9fd8e6", .45), (.6, "#9fd8e6", .08), (1, "#9fd8e6", 0)))


def _spectrum(d, size, grid):
    """Bars on both sides of the foot, kept clear of the mark by a black outline of it."""
    unit = size / 128
    fill = d.linear(0, 96 * unit, 0, 56 * unit, (0, "#02fd00"), (1, "#38c700"))
    for x, height in SPECTRUM:
        d.rect(x * unit, (96 - height) * unit, 6 * unit, height * unit, fill)
    u, c, top = grid.unit, size / 2, grid.top
    points = ((-6, 0), (-3, 0), (0, 7.6), (3, 0), (6, 0), (1.6, 11), (-1.6, 11))
    d.path("M" + "L".join(f"{c + u * x} {top + u * y}" for x, y in points) + "Z", BLACK, stroke=BLACK, line=u,
           join="miter")
