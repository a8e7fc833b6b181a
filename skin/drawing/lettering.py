"""Capitals of a single stroke on the pixel grid, as an engraving machine cuts them.

A glyph is (width in steps, path); a letter `h` steps high covers h + 1 rows.
"""
from .palette import LETTER
from .svg import n


def _signs(h, m):
    return {
        "-": (2, f"M0 {m}H2"),
        "+": (2, f"M0 {m}H2M1 {m - 1}V{m + 1}"),
        " ": (1, ""),
    }


def _digits(h, m):
    zero = f"M1 0H2Q3 0 3 1V{h - 1}Q3 {h} 2 {h}H1Q0 {h} 0 {h - 1}V1Q0 0 1 0Z"
    return {
        "0": (3, zero),
        "1": (1, f"M0 1L1 0V{h}"),
        "2": (3, f"M0 0H2Q3 0 3 1V{m - 1}Q3 {m} 2 {m}H1Q0 {m} 0 {m + 1}V{h}H3"),
        "3": (3, f"M0 0H2Q3 0 3 1V{m - 1}Q3 {m} 2 {m}H1M2 {m}Q3 {m} 3 {m + 1}V{h - 1}Q3 {h} 2 {h}H0"),
        "4": (3, f"M0 0V{m}H3M3 0V{h}"),
        "6": (3, f"M3 0H1Q0 0 0 1V{h - 1}Q0 {h} 1 {h}H2Q3 {h} 3 {h - 1}V{m + 1}Q3 {m} 2 {m}H0"),
        "7": (3, f"M0 0H3V1L1 {h - 1}V{h}"),
        "9": (3, f"M3 {m}H1Q0 {m} 0 {m - 1}V1Q0 0 1 0H2Q3 0 3 1V{h - 1}Q3 {h} 2 {h}H0"),
    }


def _letters(h, m):
    ring = f"M1 0H2Q3 0 3 1V{h - 1}Q3 {h} 2 {h}H1Q0 {h} 0 {h - 1}V1Q0 0 1 0Z"
    return {
        "A": (4, f"M0 {h}V2L2 0L4 2V{h}M0 {h - (1 if h < 6 else 2)}H4"),
        "D": (3, f"M0 0V{h}H1.4L3 {h - 1.6}V1.6L1.4 0Z"),
        "E": (3, f"M3 0H0V{h}H3M0 {m}H2"),
        "F": (3, f"M3 0H0V{h}M0 {m}H2"),
        "G": (3, f"M3 0H1Q0 0 0 1V{h - 1}Q0 {h} 1 {h}H3V{m}H2"),
        "I": (0, f"M0 0V{h}"),
        "K": (3, f"M0 0V{h}M3 0L.6 {m}L3 {h}"),
        "L": (3, f"M0 0V{h}H3"),
        "M": (4, f"M0 {h}V0L2 {m}L4 0V{h}"),
        "N": (3, f"M0 {h}V0L3 {h}V0"),
        "O": (3, ring),
        "P": (3, f"M0 {h}V0H2Q3 0 3 1V{m - 1}Q3 {m} 2 {m}H0"),
        "Q": (3, ring + f"M2 {h - 1}L3.4 {h + .6}"),
        "R": (3, f"M0 {h}V0H2Q3 0 3 1V{m - 1}Q3 {m} 2 {m}H0M1.6 {m}L3 {h - 1}V{h}"),
        "S": (3, f"M3 0H1Q0 0 0 1V{m - 1}Q0 {m} 1 {m}H2Q3 {m} 3 {m + 1}V{h - 1}Q3 {h} 2 {h}H0"),
        "T": (4, f"M0 0H4M2 0V{h}"),
        "U": (3, f"M0 0V{h - 1}Q0 {h} 1 {h}H2Q3 {h} 3 {h - 1}V0"),
        "V": (4, f"M0 0V{m}L2 {h}L4 {m}V0"),
        "Y": (4, f"M0 0L2 {m}L4 0M2 {m}V{h}"),
        "Z": (3, f"M0 0H3V1L0 {h - 1}V{h}H3"),
    }


def glyphs(h):
    middle = h // 2
    return _letters(h, middle) | _digits(h, middle) | _signs(h, middle)


def width_of(text, h, gap):
    table = glyphs(h)
    return sum(table[sign][0] + 1 + gap for sign in text) - gap


def letters(d, x, y, text, h, colour, gap=1, wall=.45, lip=.10):
    """Text with its upper left pixel at x, y. `wall` and `lip` are the strengths of the dark upper wall and of the
    light lower lip of the engraving."""
    table = glyphs(h)
    parts, place = [], x + .5
    for sign in text:
        width, path = table[sign]
        if path:
            parts.append((place, path))
        place += width + 1 + gap
    for down, paint, alpha in ((-.8, "#000", wall), (.8, "#fff", lip), (0, colour, 1)):
        if alpha == 0:
            continue
        strength = "" if alpha == 1 else f' stroke-opacity="{n(alpha)}"'
        for left, path in parts:
            d.add(f'<path transform="translate({n(left)} {n(y + .5 + down)})" d="{path}" fill="none" stroke="{paint}" '
                  f'stroke-width="1" stroke-linecap="square" stroke-linejoin="round"{strength}/>')


def letters_centred(d, cx, y, text, h, colour, gap=1, **named):
    letters(d, round(cx - width_of(text, h, gap) / 2), y, text, h, colour, gap, **named)


def caption(d, text, x):
    """The name of a window, in its caption strip."""
    letters(d, x, 6, text, 4, LETTER, gap=2)
