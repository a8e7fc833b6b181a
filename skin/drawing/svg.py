"""A drawing that is written as SVG. Lengths are pixels at scale 1."""
import functools


def number(value):
    text = f"{value:.3f}".rstrip("0").rstrip(".")
    return "0" if text in ("-0", "") else text


n = number


def _alpha(name, value):
    return "" if value == 1 else f' {name}="{n(value)}"'


class Drawing:
    """Collects shapes in the order of painting, and the gradients they use, each once."""

    def __init__(self, width, height):
        self.width, self.height = width, height
        self._definitions, self._body, self._ids = [], [], {}

    def _define(self, element, head, stops):
        inner = "".join(f'<stop offset="{n(place)}" stop-color="{colour}"{_alpha("stop-opacity", alpha)}/>'
                        for place, colour, alpha in [(*stop, 1)[:3] for stop in stops])
        key = (element, head, inner)
        if key not in self._ids:
            self._ids[key] = f"d{len(self._ids)}"
            self._definitions.append(f'<{element} id="{self._ids[key]}" gradientUnits="userSpaceOnUse" {head}>'
                                     f"{inner}</{element}>")
        return f"url(#{self._ids[key]})"

    def linear(self, x1, y1, x2, y2, *stops):
        """A gradient to fill with. A stop is (place from 0 to 1, colour[, opacity])."""
        return self._define("linearGradient", f'x1="{n(x1)}" y1="{n(y1)}" x2="{n(x2)}" y2="{n(y2)}"', stops)

    def radial(self, cx, cy, radius, *stops, focus=None):
        fx, fy = focus or (cx, cy)
        return self._define("radialGradient", f'cx="{n(cx)}" cy="{n(cy)}" r="{n(radius)}" fx="{n(fx)}" fy="{n(fy)}"',
                            stops)

    def add(self, element):
        self._body.append(element)

    def _shape(self, head, fill, alpha, stroke, stroke_width, stroke_alpha, extra=""):
        line = ""
        if stroke:
            line = f' stroke="{stroke}" stroke-width="{n(stroke_width)}"{_alpha("stroke-opacity", stroke_alpha)}'
        self.add(f'<{head} fill="{fill}"{_alpha("fill-opacity", alpha)}{line}{extra}/>')

    def rect(self, x, y, width, height, fill, radius=0, alpha=1, stroke=None, stroke_width=1, stroke_alpha=1):
        corner = f' rx="{n(radius)}"' if radius else ""
        self._shape(f'rect x="{n(x)}" y="{n(y)}" width="{n(width)}" height="{n(height)}"{corner}',
                    fill, alpha, stroke, stroke_width, stroke_alpha)

    def ring(self, x, y, width, height, radius, stroke, line=1, alpha=1):
        """A line of width `line` that lies wholly inside the box."""
        self.rect(x + line / 2, y + line / 2, width - line, height - line, "none", max(radius - line / 2, 0),
                  1, stroke, line, alpha)

    def disc(self, cx, cy, radius, fill, alpha=1):
        self._shape(f'circle cx="{n(cx)}" cy="{n(cy)}" r="{n(radius)}"', fill, alpha, None, 1, 1)

    def circle(self, cx, cy, radius, stroke, line=1, alpha=1):
        self._shape(f'circle cx="{n(cx)}" cy="{n(cy)}" r="{n(radius)}"', "none", 1, stroke, line, alpha)

    def path(self, data, fill="none", alpha=1, stroke=None, line=1, stroke_alpha=1, cap="butt", join="round",
             evenodd=False, down=0):
        extra = f' stroke-linecap="{cap}" stroke-linejoin="{join}"' if stroke else ""
        extra += ' fill-rule="evenodd"' if evenodd else ""
        extra += f' transform="translate(0 {n(down)})"' if down else ""
        self._shape(f'path d="{data}"', fill, alpha, stroke, line, stroke_alpha, extra)

    def text(self, x, y, text, size, colour, family, bold=False, anchor=None, alpha=1):
        """A line of running text; only what is made to be looked at holds any."""
        text = text.replace("&", "&amp;").replace("<", "&lt;")
        extra = ' font-weight="bold"' if bold else ""
        extra += f' text-anchor="{anchor}"' if anchor else ""
        self.add(f'<text x="{n(x)}" y="{n(y)}" font-family="{family}" font-size="{n(size)}" fill="{colour}"'
                 f'{_alpha("fill-opacity", alpha)}{extra}>{text}</text>')

    def put(self, x, y, picture, *arguments, **named):
        """What `picture` draws, with its origin at x, y."""
        self.add(f'<g transform="translate({n(x)} {n(y)})">')
        picture(self, *arguments, **named)
        self.add("</g>")

    def put_cut(self, x, y, width, height, picture):
        """As `put`; what stands over the box is cut off."""
        self.add(f'<svg x="{n(x)}" y="{n(y)}" width="{n(width)}" height="{n(height)}" overflow="hidden">')
        picture(self)
        self.add("</svg>")

    def svg(self):
        return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{n(self.width)}" height="{n(self.height)}" '
                f'viewBox="0 0 {n(self.width)} {n(self.height)}">\n<defs>\n' + "\n".join(self._definitions)
                + "\n</defs>\n" + "\n".join(self._body) + "\n</svg>\n")


def bound(picture, *arguments, **named):
    """The picture with its arguments, as something that draws into a drawing."""
    return functools.partial(_call, picture, arguments, named)


def _call(picture, arguments, named, drawing):
    picture(drawing, *arguments, **named)
