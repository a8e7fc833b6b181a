"""The lists of pictures: which drawing stands at which index, how large it is, and what lies under it."""
from dataclasses import dataclass
from typing import Callable, Optional

from . import keys, sliders, symbols, windows
from .svg import bound

STATES = "nph"      # the order in a list: normal, pressed, hover


@dataclass
class Picture:
    """`draw` fills the box of `size`. `ground` is the place (list, x, y) on a background of which it carries a piece:
    the background shows where the drawing is clear. A picture without one fills its box itself."""
    size: tuple
    draw: Callable
    ground: Optional[tuple] = None
    shown: Optional[tuple] = None
    hole: bool = False      # a background, with corners that are cut out of the window


def _states(table, indexes, size, draw, *arguments, ground=None, shown=None, **named):
    for index, state in zip(indexes, STATES):
        table[index] = Picture(size, bound(draw, *arguments, state=state, **named), ground, shown)


def _from(first):
    return range(first, first + 3)


def _wmain():
    table = {1: Picture((265, 177), windows.main_window, hole=True)}
    _states(table, _from(2), (89, 9), sliders.volume_scale)
    for first, symbol in ((5, symbols.GEAR), (8, symbols.RECORD), (11, symbols.SLIDERS), (20, symbols.FOLDER),
                          (32, symbols.LIST)):
        _states(table, _from(first), (33, 33), keys.round_key, symbol)
    _states(table, _from(14), (25, 25), sliders.speaker)
    _states(table, _from(17), (28, 28), keys.badge, ground=("wmain", 224, 90))
    transport = ((38, symbols.BACK), (35, symbols.PLAY), (29, symbols.PAUSE), (41, symbols.STOP), (26, symbols.EJECT),
                 (23, symbols.NEXT))
    for place, (first, symbol) in enumerate(transport):
        _states(table, _from(first), (28, 28), keys.transport_key, symbol, ground=("wmain", 16 + 28 * place, 90))
    _states(table, _from(44), (29, 13), sliders.widened, sliders.position_knob, width=16, height=9,
            ground=("wmain", 124, 73), shown=(16, 9))
    _states(table, _from(47), (29, 13), sliders.widened, sliders.jewel, width=9, height=9)
    return table


def _wnd():
    table = {}
    _states(table, _from(1), (13, 12), keys.window_bead, "close", ground=("wmain", 249, 2))
    _states(table, _from(4), (13, 12), keys.window_bead, "minimize", ground=("wmain", 233, 2))
    _scroll_bar(table, 7)
    return table


def _scroll_bar(table, first):
    _states(table, _from(first), (16, 417), sliders.scroll_track)
    _states(table, _from(first + 3), (16, 16), keys.scroll_arrow, False)
    _states(table, _from(first + 6), (16, 16), keys.scroll_arrow, True)
    _states(table, _from(first + 9), (16, 16), sliders.scroll_ticker)
    return table


def _fx():
    table = {1: Picture((265, 97), windows.equalizer, hole=True)}
    _states(table, _from(2), (9, 52), sliders.equalizer_bar)
    for first, word, y, top, lamp in ((5, "ON", 23, 1, True), (8, "OFF", 23, 1, False), (11, "LOAD", 53, 1, None),
                                      (14, "RESET", 37, 2, None), (17, "SAVE", 69, 0, None)):
        _states(table, _from(first), (40, 14), keys.equalizer_key, word, top=top, lamp=lamp, ground=("fx", 203, y))
    _states(table, _from(20), (9, 9), sliders.jewel)
    return table


def _pl():
    table = {1: Picture((314, 490), windows.playlist, hole=True)}
    for indexes, symbol, x in (((2, 3, 4), symbols.CROSS, 268), ((5, 6, 19), symbols.PLUS, 14),
                               ((20, 24, 25), symbols.ORDER, 48), ((32, 33, 34), symbols.TRAY, 82)):
        _states(table, indexes, (32, 16), keys.edge_key, symbol, ground=("pl", x, 471))
    for first, word in ((7, "FOLDER"), (10, "LIST"), (13, "URL"), (16, "FILES"), (21, "A-Z"), (26, "RANDOM"),
                        (29, "Z-A")):
        _states(table, _from(first), (54, 16), keys.popout_key, word)
    return table


LISTS = {
    "wmain": _wmain(),
    "wnd": _wnd(),
    "fx": _fx(),
    "pl": _pl(),
    "listmgr": {1: Picture((265, 138), windows.list_manager, hole=True)},
    "scrollBar": _scroll_bar({}, 1),
}
