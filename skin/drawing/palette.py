"""The colours of the player, and the gradients that stand for a material. Light comes from the upper left.

States are "n" (normal), "h" (hover) and "p" (pressed).
"""
EDGE = "#08090b"            # outline of the body
BLACK = "#010101"           # black that is seen; #000000 is a hole in the window
GAP = "#0c0d0f"             # the gap around a key
CYAN = "#00ffff"
LETTER = "#c3cbd5"          # captions cut into the metal
NAME = "#8f98a3"            # the name beside the badge stands back
PRINT = "#3fa6b0"           # printed on the glass: frequencies
PRINT_LOW = "#2b7780"       # printed on the glass: signs
GRID = "#1c454c"

KEY_TEXT = {"n": "#dde3e9", "h": "#d9fdff", "p": "#6fd0d8"}
SYMBOL = {"n": ("#e3e8ed", "#c2cad3"), "h": ("#f2ffff", "#7ff4fb"), "p": ("#8fdfe6", "#4fb9c3")}

FACE = {
    "n": ((0, "#636b76"), (.5, "#434951"), (1, "#2d3137")),
    "h": ((0, "#6d7581"), (.5, "#4a515a"), (1, "#353a42")),
    "p": ((0, "#1b1e22"), (.5, "#262a2f"), (1, "#353a41")),
}
ROUND_FACE = {
    "n": ((0, "#68707b"), (.5, "#434951"), (1, "#2a2e33")),
    "h": ((0, "#7b8490"), (.5, "#515861"), (1, "#343940")),
    "p": ((0, "#15171a"), (.5, "#24272c"), (1, "#3a3f46")),
}
BEZEL = ((0, "#b3bcc7"), (.3, "#6a727d"), (.62, "#2d3136"), (1, "#181a1d"))
STEEL = {
    "n": ((0, "#a7b0bb"), (.45, "#69717c"), (1, "#353a41")),
    "h": ((0, "#cdd6e0"), (.45, "#87919d"), (1, "#484f58")),
    "p": ((0, "#4b525b"), (.55, "#5d656f"), (1, "#7c8590")),
}
JEWEL = {
    "n": ((0, "#b9fbff"), (.35, "#27c3d1"), (1, "#064a53")),
    "h": ((0, "#ffffff"), (.35, "#63f6ff"), (1, "#0b97a5")),
    "p": ((0, "#8fe9ef"), (.4, "#0f8b97"), (1, "#03323a")),
}
LAMP = {
    "n": ((0, "#a8fbff"), (.5, "#22c7d6"), (1, "#0a7d89")),
    "h": ((0, "#ffffff"), (.5, "#7bf8ff"), (1, "#1fd4e4")),
    "p": ((0, "#63d9e2"), (.5, "#12909d"), (1, "#075a63")),
}
# How strongly the gap around a key is lit.
GAP_LIGHT = {"n": 0, "h": .55, "p": .22}
ROUND_LIGHT = {"n": 0, "h": .72, "p": .3}


def sink(state):
    """Pixels by which what stands on a key goes down with it."""
    return 1 if state == "p" else 0
