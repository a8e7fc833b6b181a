#!/usr/bin/env python3
"""Draws the pictures of the windows and the program's icon beside this file.

make.py            draws what has changed
make.py --check    draws scales 1 and 2 anew and compares: tells what differs, and fails then
make.py --board    draws board.png in the current folder: the windows and all states, to be looked at

Needs Python 3 and rsvg-convert of librsvg.
"""
import pathlib
import sys

from drawing import png
from drawing.board import board
from drawing.icon import GRIDS, icon
from drawing.lists import LISTS
from drawing.render import SCALES, Renderer, render_svg
from drawing.svg import Drawing

HERE = pathlib.Path(__file__).resolve().parent
# Renderers round the steps of a gradient differently; a line that moves changes a pixel by far more.
TOLERANCE = 3


def pictures(scales):
    """Each picture's path and image."""
    renderer = Renderer()
    for name in LISTS:
        for scale in scales:
            for index, (width, height, rows) in renderer.pictures(name, scale).items():
                yield HERE / name / f"{index}@{scale}x.png", (width, height, 3, rows)


def icons():
    """Each icon's path, image and drawing."""
    for size in GRIDS:
        drawing = Drawing(size, size)
        icon(drawing, size)
        yield HERE / "icon" / f"{size}.png", render_svg(drawing.svg(), 1), drawing.svg()


def write_if_changed(path, data):
    path.parent.mkdir(exist_ok=True)
    if not path.exists() or path.read_bytes() != data:
        path.write_bytes(data)


def draw():
    for path, image in pictures(SCALES):
        write_if_changed(path, png.write(*image))
    for path, image, drawing in icons():
        write_if_changed(path, png.write(*image))
        if path.stem == "256":
            write_if_changed(path.with_name("scalable.svg"), drawing.encode())


def difference(one, other):
    """The largest difference of two images in any channel of any pixel; None where their shapes differ."""
    if one[:3] != other[:3]:
        return None
    return max(max(abs(a - b) for a, b in zip(row, twin)) for row, twin in zip(one[3], other[3]) if row != twin) \
        if one[3] != other[3] else 0


def check():
    """The number of files that are not what the drawings make."""
    wrong = 0
    found = [*pictures((1, 2)), *((path, image) for path, image, _ in icons())]
    for path, image in found:
        far = difference(png.read(path.read_bytes()), image) if path.exists() else None
        if far is None or far > TOLERANCE:
            print(f"{path.relative_to(HERE)}: " + (f"differs by {far}" if far else "missing, or of another size"))
            wrong += 1
    print(f"{len(found)} pictures compared, {wrong} wrong")
    return wrong


def main():
    if sys.argv[1:] == ["--check"]:
        return 1 if check() else 0
    if sys.argv[1:] == ["--board"]:
        pathlib.Path("board.png").write_bytes(png.write(*render_svg(board().svg(), 2)))
        return 0
    if sys.argv[1:]:
        print(__doc__)
        return 2
    draw()
    return 0


if __name__ == "__main__":
    sys.exit(main())
