"""The keys. Each function draws one picture into its own box, in one of the states "n", "h" and "p"."""
from . import symbols
from .lettering import letters_centred
from .metal import cap, gap_light, hollow
from .palette import BEZEL, BLACK, CYAN, GAP, KEY_TEXT, ROUND_FACE, ROUND_LIGHT, sink
from .symbols import mark, sign


def transport_key(d, symbol, state):
    """28 x 28, in the channel of the transport."""
    d.rect(0, 0, 28, 28, GAP, 4)
    gap_light(d, 0, 0, 28, 28, 4, state)
    cap(d, 1, 1, 26, 26, 4, state)
    if state != "p":
        hollow(d, 14, 11)
    d.put(14, 14 + sink(state), sign, symbol, state)


def badge(d, state):
    """28 x 28: black glass in a steel ring, with the mark."""
    c = 14
    d.disc(c, c, 13.5, "#0a0b0d")
    light = {"n": 0, "h": .6, "p": .25}[state]
    if light:
        d.circle(c, c, 12.9, CYAN, 1.5, light)
    ring = ((0, "#3a3f46"), (.5, "#4a5058"), (1, "#6d7580")) if state == "p" else \
        ((0, "#aab3be"), (.45, "#5b626b"), (1, "#1f2226"))
    d.disc(c, c, 12.4, d.linear(4, 4, 24, 24, *ring))
    d.disc(c, c, 10.6, d.linear(5, 5, 23, 23, (0, "#030304"), (1, "#3c434b")))
    d.disc(c, c, 9.8, "#021416" if state == "h" else BLACK)
    if state == "h":
        d.disc(c, c, 9.8, d.radial(c, c, 9.8, (0, CYAN, .34), (1, CYAN, 0)))
    facets = {"n": ("#8df6fd", "#1fb6c4"), "h": ("#f4ffff", "#5df4ff"), "p": ("#43bac4", "#13727c")}[state]
    mark(d, c, 9 + sink(state), *facets)


def round_key(d, symbol, state):
    """33 x 33, on the black shelf: steel bezel, dark gap, domed face."""
    c = 16.5
    d.rect(0, 0, 33, 33, BLACK)
    d.disc(c, c, 15.5, d.linear(6, 5, 27, 28, *BEZEL))
    d.disc(c, c, 13.9, "#050607")
    light = ROUND_LIGHT[state]
    if light:
        d.circle(c, c, 13.5, CYAN, 1.4, light)
        d.circle(c, c, 14.8, CYAN, 1.6, light * .22)
    rim = ((0, "#000", .7), (.5, "#000", .25), (1, "#fff", .12)) if state == "p" else \
        ((0, "#fff", .24), (.35, "#fff", .06), (.6, "#000", .06), (1, "#000", .4))
    d.disc(c, c, 12.9, d.linear(7, 7, 26, 26, *ROUND_FACE[state]))
    d.circle(c, c, 12.4, d.linear(7, 7, 26, 26, *rim))
    d.put(c, c + sink(state), sign, symbol, state)


def window_bead(d, kind, state):
    """13 x 12: a round bead, 11 across, one row of lip below."""
    cx, cy = 6.5, 5.5
    d.disc(cx, cy + 1, 5.5, "#fff", .16)
    d.disc(cx, cy, 5.5, "#0a0b0d")
    if state == "p":
        d.disc(cx, cy, 4.5, d.linear(3, 2, 10, 9, (0, "#15171a"), (1, "#34393f")))
        d.circle(cx, cy, 4, CYAN, 1, .18)
    elif state == "h":
        d.disc(cx, cy, 5.5, CYAN, .30)
        d.disc(cx, cy, 4.5, d.radial(cx, cy, 5.5, (0, "#d4fdff"), (.45, "#45dcea"), (1, "#0b7985"),
                                     focus=(cx - 1.6, cy - 1.8)))
    else:
        d.disc(cx, cy, 4.5, d.linear(3, 2, 10, 9, (0, "#69717c"), (1, "#2d3137")))
        d.circle(cx, cy, 4, d.linear(3, 2, 10, 9, (0, "#fff", .35), (.5, "#fff", 0), (1, "#000", .3)))
    colour = {"n": "#f2f5f8", "h": "#011e22", "p": "#5fbcc5"}[state]
    if kind == "close":
        y = 3.75 + sink(state) / 2
        d.path(f"M4.75 {y}L8.25 {y + 3.5}M8.25 {y}L4.75 {y + 3.5}", stroke=colour,
               line=1.3 if state == "h" else 1.2, cap="square")
    else:
        d.rect(4, 5 + sink(state), 5, 1, colour)


EQUALIZER_KEY_HEIGHT = 12


def equalizer_key(d, word, state, top=0, lamp=None):
    """40 x 14: the key takes 12 rows, from row `top` on, so that the four stand at even distances though their places
    do not. `lamp` lit, dark, or none."""
    d.put(0, top, _equalizer_key, word, state, lamp)


def _equalizer_key(d, word, state, lamp):
    width, height = 40, EQUALIZER_KEY_HEIGHT
    d.rect(0, 0, width, height, GAP, 4)
    gap_light(d, 0, 0, width, height, 4, state)
    cap(d, 1, 1, width - 2, height - 2, 3, state)
    centre = width / 2
    if lamp is not None:
        centre += 4
        _lamp(d, 8.5, 6 + sink(state), lamp)
    letters_centred(d, centre, 3 + sink(state), word, 5, KEY_TEXT[state], wall=.5, lip=0)


def _lamp(d, x, y, lit):
    d.disc(x, y, 3, "#07090b")
    stops = ((0, "#3d5b60"), (1, "#0d2226"))
    if lit:
        d.disc(x, y, 3.4, CYAN, .18)
        stops = ((0, "#eaffff"), (.5, "#3fefff"), (1, "#0ea4b4"))
    d.disc(x, y, 2, d.radial(x, y, 2.2, *stops, focus=(x - .8, y - .8)))


def edge_key(d, symbol, state):
    """32 x 16, at the lower edge of the playlist."""
    d.rect(0, 0, 32, 16, GAP, 4)
    gap_light(d, 0, 0, 32, 16, 4, state)
    cap(d, 1, 1, 30, 14, 3, state)
    d.put(16, 8 + sink(state), sign, symbol, state)


def popout_key(d, word, state):
    """54 x 16: these stand in a column, without rounding between neighbours."""
    d.rect(0, 0, 54, 16, GAP)
    gap_light(d, 0, 0, 54, 16, 2, state)
    cap(d, 1, 1, 52, 14, 2, state)
    letters_centred(d, 27, 4 + sink(state), word, 6, KEY_TEXT[state], wall=.5, lip=0)


def scroll_arrow(d, up, state):
    """16 x 16, on glass."""
    d.rect(0, 0, 16, 16, BLACK)
    d.rect(0, 0, 16, 16, GAP, 4)
    gap_light(d, 0, 0, 16, 16, 4, state)
    cap(d, 1, 1, 14, 14, 3, state)
    d.put(8, 8 + sink(state), sign, symbols.UP if up else symbols.DOWN, state)
