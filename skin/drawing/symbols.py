"""The signs on keys, as paths around 0, 0: straight edges meet whole pixels where the key's centre puts them."""
import math

from .palette import CYAN, SYMBOL
from .svg import n

PLAY = "M-5 -6.5L6.5 0L-5 6.5Z"
PAUSE = "M-5 -6H-1V6H-5ZM1 -6H5V6H1Z"
STOP = "M-5 -5H5V5H-5Z"
BACK = "M-6 -5H-4V5H-6ZM6 -5.5V5.5L-4 0Z"
NEXT = "M4 -5H6V5H4ZM-6 -5.5V5.5L4 0Z"
EJECT = "M0 -6.2L6.5 1H-6.5ZM-6 3H6V6H-6Z"

LIST = "".join(f"M-6.5 {y}h3v2h-3zM-1.5 {y}h9v2h-9z" for y in (-6.5, -1.5, 3.5))
FOLDER = "M-7.5 -5.5h5l2 2h8v10h-15zM-5.5 -.5v1h11v-1zM-5.5 2.5v1h7v-1z"
SLIDERS = "".join(f"M{x - .5} -7.5h1V{y - .5}h-1zM{x - 2.5} {y + .5}h5v3h-5zM{x - .5} {y + 4.5}h1V7.5h-1z"
                  for x, y in ((-5, -1), (0, -5), (5, 1)))
RECORD = ("M-2 -4A5.75 5.75 0 1 0 -2 7.5A5.75 5.75 0 1 0 -2 -4Z"
          "M-2 -.25A2 2 0 1 1 -2 3.75A2 2 0 1 1 -2 -.25Z"
          "M4.5 -7.5h3v3h-.5v7l-2.6 3.2l-1.2 -1l2.3 -2.9v-6.3h-1z")

PLUS = "M-1 -4h2v3h3v2h-3v3h-2v-3h-3v-2h3z"
ORDER = "M-5 -4h10v2h-10zM-5 -1h7v2h-7zM-5 2h4v2h-4z"
TRAY = "M-1 -5h2v4h2l-3 3l-3 -3h2zM-5 1h2v2h6v-2h2v4h-10z"
CROSS = "M-4 -2.6L-2.6 -4L0 -1.4L2.6 -4L4 -2.6L1.4 0L4 2.6L2.6 4L0 1.4L-2.6 4L-4 2.6L-1.4 0Z"
UP = "M-4 2L0 -2.4L4 2Z"
DOWN = "M-4 -2L0 2.4L4 -2Z"


def _gear():
    teeth, outer, inner, hole = 8, 7.6, 5.6, 2.5
    points = []
    for tooth in range(teeth):
        angle = 2 * math.pi * tooth / teeth - math.pi / 2
        for turn, radius in ((-.30, inner), (-.20, outer), (.20, outer), (.30, inner)):
            points.append(f"{n(radius * math.cos(angle + turn))} {n(radius * math.sin(angle + turn))}")
    return f"M{'L'.join(points)}ZM0 {-hole}A{hole} {hole} 0 1 0 0 {hole}A{hole} {hole} 0 1 0 0 {-hole}Z"


GEAR = _gear()


def sign(d, path, state):
    """A painted engraving: dark upper wall, light lower lip, paint; filled with light by hover."""
    if state == "n":
        d.path(path, "#000", .55, evenodd=True, down=-.8)
        d.path(path, "#fff", .15, evenodd=True, down=.8)
    elif state == "h":
        for line, alpha in ((5, .07), (3, .10), (1.4, .16)):
            d.path(path, stroke=CYAN, line=line, stroke_alpha=alpha)
        d.path(path, "#000", .35, evenodd=True, down=-1)
    else:
        d.path(path, "#000", .6, evenodd=True, down=-1)
    upper, lower = SYMBOL[state]
    d.path(path, d.linear(0, -7, 0, 7, (0, upper), (1, lower)), evenodd=True)


def mark(d, cx, top, left, right, unit=1):
    """The mark of the program: a V of two facets, 12 x 11 units, the left one in the light."""
    for side, fill in ((-1, left), (1, right)):
        points = ((6, 0), (3, 0), (0, 7.6), (0, 11), (1.6, 11))
        d.path("M" + "L".join(f"{n(cx + side * unit * x)} {n(top + unit * y)}" for x, y in points) + "Z", fill)
