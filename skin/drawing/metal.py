"""The materials: the anodised body, the glass let into it, channels, and the caps of keys."""
import math
import random

from .palette import BLACK, CYAN, EDGE, FACE, GAP_LIGHT

RADIUS = 8      # of the body's corners
CAPTION = 18    # rows of the caption strip, the same in all windows: they share their buttons


def body(d, width, height, seed):
    """The body: outline, face, brushed lines, bevel."""
    d.rect(0, 0, width, height, EDGE, RADIUS)
    inner = (1, 1, width - 2, height - 2)
    _face(d, width, height)
    # A pool of light at the upper left, shade at the lower right.
    d.rect(*inner, d.radial(0, 0, 240, (0, "#cfdcec", .17), (.5, "#cfdcec", .05), (1, "#cfdcec", 0)), RADIUS - 1)
    shade = min(220, height - CAPTION)
    d.rect(*inner, d.radial(width, height, shade, (0, "#000", .24), (1, "#000", 0)), RADIUS - 1)
    brush(d, width, height, seed)
    # The bevel: a bright chamfer that turns dark on the way to the lower right, and a soft line inside it. Both are the
    # same in the upper right corner of all windows, where the buttons stand.
    way = _diagonal(width, height)
    d.ring(*inner, RADIUS - 1, d.linear(0, 0, *way, (0, "#dde5ee", .85), (.18, "#aab3be", .55), (.4, "#7d8691", .40),
                                        (.45, "#737c87", .38), (.58, "#737c87", .38), (.7, "#33383e", .4),
                                        (1, "#08090b", .75)))
    d.ring(2, 2, width - 4, height - 4, RADIUS - 2,
           d.linear(0, 0, *way, (0, "#fff", .13), (.42, "#fff", 0), (.6, "#000", 0), (1, "#000", .22)))


def _diagonal(width, height):
    """The end of a gradient from the upper left corner on, whose middle goes through the two corners beside."""
    span = 1 / width ** 2 + 1 / height ** 2
    return 2 / width / span, 2 / height / span


def _face(d, width, height):
    """The caption strip is painted for itself: it must not depend on the window's height."""
    r, right, foot = RADIUS - 1, width - 1, height - 1
    d.path(f"M1 {CAPTION}V{r + 1}A{r} {r} 0 0 1 {r + 1} 1H{right - r}A{r} {r} 0 0 1 {right} {r + 1}V{CAPTION}Z",
           d.linear(0, 0, 0, CAPTION, (0, "#434850"), (1, "#363b42")))
    d.path(f"M1 {CAPTION}V{foot - r}A{r} {r} 0 0 0 {r + 1} {foot}H{right - r}A{r} {r} 0 0 0 {right} {foot - r}V{CAPTION}Z",
           d.linear(0, CAPTION, 0, height, (0, "#363b42"), (.5, "#2b2f34"), (1, "#222529")))


def _inset(y, height):
    """How far the face's rounded outline lies from the window's side at row y."""
    near = min(y, height - y)
    if near >= RADIUS:
        return 2.4
    return 2.4 + RADIUS - math.sqrt(max(RADIUS ** 2 - (RADIUS - near) ** 2, 0))


def brush(d, width, height, seed):
    """Horizontal brushing: every half pixel a full line, light or dark, and now and then a streak. What lies in the
    caption strip comes from one seed and has no streaks at its right end, so that the buttons of all windows stand on
    the same ground."""
    rows = {"#fff": {}, "#000": {}}
    common, own = random.Random(7), random.Random(seed)

    def line(colour, x, y, length, alpha):
        step = round(alpha * 200) / 200
        if step > 0:
            rows[colour].setdefault(step, []).append(f"M{x:.1f} {y}h{length:.1f}v.5h-{length:.1f}z")

    for half in range(3, 2 * (height - 2)):
        y = half / 2
        shared = y < CAPTION
        inset = _inset(y, height)
        strength = (common if shared else own).gauss(0, 1)
        if abs(strength) > .5:
            line("#fff" if strength > 0 else "#000", inset, y, width - 2 * inset, min(abs(strength) * .012, .03))
        end = 225 if shared else width - inset
        for _ in range(int(width / 130) + 1):
            length = own.uniform(10, 70)
            x = own.uniform(inset, end - 4)
            line("#fff" if own.random() < .55 else "#000", x, y, min(length, end - x), own.uniform(.008, .03))
    for colour, strengths in rows.items():
        for alpha, lines in sorted(strengths.items()):
            d.path("".join(lines), colour, alpha)


def glass(d, x, y, width, height, radius=5):
    """A sunk pane of black glass in the box; its lip lies around it."""
    across = (x, y, x + width, y + height)
    d.ring(x - 2, y - 2, width + 4, height + 4, radius + 2,
           d.linear(*across, (0, "#000", .22), (.5, "#000", .10), (1, "#fff", .05)))
    d.ring(x - 1, y - 1, width + 2, height + 2, radius + 1,
           d.linear(*across, (0, "#000", .75), (.45, "#0b0c0e", .7), (.62, "#565e68", .40), (1, "#98a2ae", .42)))
    d.rect(x, y, width, height, BLACK, radius)
    # The cut edge of the pane is the one place where the glass shows light.
    d.ring(x, y, width, height, radius, d.linear(*across, (0, "#05080a"), (.5, "#0a0f12"), (1, "#26323a")))
    d.path(f"M{x + radius} {y + 1.5}H{x + width - radius}", stroke=d.linear(
        x, 0, x + width, 0, (0, "#9fd8e6", .04), (.16, "#9fd8e6", .34), (.42, "#9fd8e6", .08), (1, "#9fd8e6", 0)))


def channel(d, x, y, width, height, radius):
    """A dark channel cut into the metal."""
    d.ring(x - 1, y - 1, width + 2, height + 2, radius + 1,
           d.linear(x, y, x + width, y + height, (0, "#000", .6), (.5, "#000", .3), (.65, "#fff", .12),
                    (1, "#fff", .24)))
    d.rect(x, y, width, height, d.linear(0, y, 0, y + height, (0, "#07080a"), (1, "#121417")), radius)


def cap(d, x, y, width, height, radius, state):
    """A key cap, raised or pressed."""
    across = (x, y, x + width, y + height)
    d.rect(x, y, width, height, d.linear(*across, *FACE[state]), radius)
    if state == "p":
        outer = ((0, "#000", .75), (.5, "#000", .3), (1, "#fff", .12))
        inner = ((0, "#000", .4), (.5, "#000", 0))
    else:
        outer = ((0, "#fff", .42), (.4, "#fff", .12), (.6, "#000", .10), (1, "#000", .45))
        inner = ((0, "#fff", .12), (.5, "#fff", 0), (1, "#000", .14))
    d.ring(x, y, width, height, radius, d.linear(*across, *outer))
    d.ring(x + 1, y + 1, width - 2, height - 2, radius - 1, d.linear(*across, *inner))


def gap_light(d, x, y, width, height, radius, state):
    """Light that leaks out of the gap around a key."""
    if GAP_LIGHT[state]:
        d.ring(x, y, width, height, radius, CYAN, 1, GAP_LIGHT[state])


def hollow(d, centre, radius):
    """A shallow hollow for the finger: its far wall, at the lower right, catches the light."""
    d.disc(centre, centre, radius, d.radial(
        centre, centre, radius, (0, "#fff", .10), (.6, "#fff", .03), (1, "#fff", 0),
        focus=(centre + radius * .45, centre + radius * .5)))
    d.disc(centre, centre, radius, d.radial(
        centre, centre, radius, (0, "#000", .14), (.7, "#000", .03), (1, "#000", 0),
        focus=(centre - radius * .45, centre - radius * .5)))
