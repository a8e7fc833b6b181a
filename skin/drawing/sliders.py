"""What slides and what it slides on, in the states "n", "h" and "p"; and the speaker beside the volume."""
import math

from .palette import BLACK, CYAN, JEWEL, LAMP, STEEL, sink
from .svg import n

def position_knob(d, state):
    """16 x 9, as it is shown."""
    d.rect(0, 0, 16, 9, "#050607", 4.5)
    d.rect(.5, .5, 15, 8, d.linear(0, 0, 0, 9, *STEEL[state]), 4)
    d.ring(.5, .5, 15, 8, 4, d.linear(0, 0, 16, 9, (0, "#fff", .6), (.4, "#fff", .1), (1, "#000", .35)), .8)
    d.rect(4, 3, 8, 3, "#03181b", 1.5)
    d.rect(4.5, 3.2, 7, 2.6, d.linear(4, 3, 12, 6, *LAMP[state]), 1.3)


def jewel(d, state):
    """9 x 9, on glass: a cabochon in a steel bezel."""
    c, stone = 4.5, 3.5
    d.rect(0, 0, 9, 9, BLACK)
    d.disc(c, c, 4.5, d.linear(0, 0, 9, 9, (0, "#c3ccd6"), (.5, "#5f6771"), (1, "#23262b")))
    d.disc(c, c, stone, d.radial(c, c, stone * 1.25, *JEWEL[state], focus=(c - stone * .4, c - stone * .45)))


def widened(d, picture, state, width, height):
    """A knob as its list holds it, 29 x 13; it is shown at its own size again."""
    d.add(f'<g transform="scale({n(29 / width)} {n(13 / height)})">')
    picture(d, state)
    d.add("</g>")


def speaker(d, state):
    """25 x 25: a luminous print on the glass."""
    d.rect(0, 0, 25, 25, BLACK)
    colour = {"n": "#2fb5c1", "h": "#a6fbff", "p": "#1c7f89"}[state]
    down = sink(state)
    cone = f"M4 {10 + down}h3l5 -5v15l-5 -5h-3z"
    if state == "h":
        for line, alpha in ((4, .10), (2, .16)):
            d.path(cone, stroke=CYAN, line=line, stroke_alpha=alpha)
    d.path(cone, colour)
    # The outermost points of the arcs lie on pixel centres: 15.5 and 18.5.
    for radius, turn, alpha in ((3.5, .30, 1), (6.5, .27, .9)):
        reach, rise = radius * math.cos(turn * math.pi), radius * math.sin(turn * math.pi)
        d.path(f"M{n(12 + reach)} {n(12.5 + down - rise)}A{radius} {radius} 0 0 1 {n(12 + reach)} {n(12.5 + down + rise)}",
               stroke=colour, line=1.25, stroke_alpha=alpha, cap="round")


def volume_scale(d, state):
    """89 x 9: 21 lines, one for each five per cent, growing to the right."""
    d.rect(0, 0, 89, 9, BLACK)
    d.rect(2, 4, 85, 1, "#0f3a40" if state == "n" else "#1b666f")
    gain = {"n": 1, "h": 1.55, "p": 1.275}[state]
    for step in range(21):
        share = step / 20
        height = 1 + 2 * round(share * 3)
        red, green, blue = (min(255, int((low + rise * share) * gain))
                            for low, rise in ((0x1c, 0x12), (0x66, 0x4a), (0x6e, 0x4e)))
        d.rect(4 + 4 * step, 4 - height // 2, 1, height, f"#{red:02x}{green:02x}{blue:02x}")


def equalizer_bar(d, state):
    """9 x 52: a slot in the glass."""
    d.rect(0, 0, 9, 52, BLACK)
    rim, inside = {"n": ("#16282c", "#030506"), "h": ("#1e7780", "#0a3238"), "p": ("#35c9d6", "#0f4c54")}[state]
    d.rect(3, 1, 3, 50, rim, 1.5)
    d.rect(4, 2, 1, 48, inside)


def scroll_track(d, state):
    """16 x 417."""
    d.rect(0, 0, 16, 417, BLACK)
    rim = {"n": "#10191c", "h": "#16333a", "p": "#1b4a53"}[state]
    d.rect(6, 0, 4, 417, rim)
    d.rect(7, 0, 2, 417, "#040607" if state == "n" else "#0a1c20")


def scroll_ticker(d, state):
    """16 x 16, with the piece of track beside it."""
    d.rect(0, 0, 16, 16, BLACK)
    d.rect(6, 0, 4, 16, "#10191c")
    d.rect(1, 0, 14, 16, "#050607", 4)
    d.rect(2, 1, 12, 14, d.linear(2, 0, 14, 0, *STEEL[state]), 3)
    d.ring(2, 1, 12, 14, 3, d.linear(2, 1, 14, 15, (0, "#fff", .5), (.5, "#fff", .05), (1, "#000", .4)))
    d.rect(5, 6, 6, 4, "#03181b", 1.5)
    d.rect(5.5, 6.5, 5, 3, d.linear(5, 6, 11, 10, *LAMP[state]), 1)
