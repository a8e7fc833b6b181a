"""The backgrounds of the four windows."""
from .lettering import caption, letters, letters_centred
from .metal import body, channel, glass
from .palette import GRID, NAME, PRINT, PRINT_LOW

FREQUENCIES = ("60", "170", "310", "600", "1K", "3K", "6K", "9K", "12K", "14K", "16K")


def main_window(d):
    body(d, 265, 177, 11)
    caption(d, "VELMO PLAYER", 21)
    _menu_seat(d)
    glass(d, 11, 18, 243, 52)
    d.path("M119.5 24V66", stroke=d.linear(0, 24, 0, 66, (0, "#12262a", 0), (.3, "#163238"), (.7, "#163238"),
                                           (1, "#12262a", 0)))
    channel(d, 17, 75, 231, 5, 2.5)
    _position_scale(d)
    channel(d, 15, 89, 170, 30, 5)
    letters_centred(d, 204, 101, "VELMO", 4, NAME, gap=2)
    glass(d, 11, 125, 243, 40)


def _menu_seat(d):
    """The countersunk seat of the menu's bead, which is the close button's picture at 8, 8, made 6 x 6."""
    d.disc(11, 11, 4.5, d.linear(0, 8, 0, 14, (0, "#42474f"), (1, "#393e45")))
    d.ring(6, 6, 10, 10, 5, d.linear(7, 7, 15, 15, (0, "#000", .7), (.5, "#000", .2), (1, "#fff", .35)))


def _position_scale(d):
    """Tenths of the way that the middle of the position's knob takes, from x 24 to 241."""
    for tenth in range(11):
        x = round(24 + 217 * tenth / 10) - .5
        height = 4 if tenth % 5 == 0 else 2
        d.path(f"M{x} 83v{height}", stroke="#000", stroke_alpha=.5)
        d.path(f"M{x + 1} 83v{height}", stroke="#fff", stroke_alpha=.16)


def equalizer(d):
    body(d, 265, 97, 23)
    caption(d, "EQUALIZER", 14)
    glass(d, 11, 18, 186, 71)
    for y, alpha in ((28, .55), (51, 1), (71, .55)):
        d.path(f"M20 {y + .5}H195", stroke=GRID, stroke_alpha=alpha)
    for band, text in enumerate(FREQUENCIES):
        letters_centred(d, 28.5 + 16 * band, 79, text, 4, PRINT, wall=0, lip=0)
    for y, sign in ((26, "+"), (49, "0"), (69, "-")):
        letters(d, 14, y, sign, 4, PRINT_LOW, wall=0, lip=0)


def playlist(d):
    body(d, 314, 490, 37)
    caption(d, "PLAYLIST", 14)
    glass(d, 11, 18, 292, 450)


def list_manager(d):
    body(d, 265, 138, 53)
    caption(d, "PLAYLIST MANAGER", 14)
    glass(d, 11, 18, 243, 114)
