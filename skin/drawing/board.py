"""A sheet to look at: the windows as they stand on a desktop with sample texts, and every key in its states."""
from . import keys, sliders, symbols
from .lists import LISTS
from .palette import CYAN
from .svg import Drawing

SANS, MONO = "DejaVu Sans Condensed", "DejaVu Sans Mono"
SPECTRUM = (13, 19, 24, 27, 25, 22, 26, 23, 18, 20, 24, 21, 16, 14, 17, 20, 15, 12, 16, 18, 13, 10, 12, 15, 11, 8, 9, 12,
            8, 6, 7, 4, 3)
CURVE = (36, 33, 38, 46, 52, 56, 53, 48, 42, 37, 34)
TITLES = ("Aurelia Voss - Northern Light", "Aurelia Voss - Slow Harbour", "Kite & Compass - Long Way Down",
          "Kite & Compass - Glass Orchard", "Milan Horak - Etude in Grey", "Milan Horak - The Clockmaker",
          "The Low Tide Society - Salt", "Sable Fox - Afterimage", "Odette Marlow - October", "Brass Meridian - Copper Sky")


def _at(d, x, y, name, index):
    d.put_cut(x, y, *LISTS[name][index].size, LISTS[name][index].draw)


def _main_window(d):
    _at(d, 0, 0, "wmain", 1)
    d.add('<g transform="translate(8 8) scale(.4615 .5)">')
    keys.window_bead(d, "close", "n")
    d.add("</g>")
    _at(d, 233, 2, "wnd", 4)
    _at(d, 249, 2, "wnd", 1)
    d.text(16, 36, "02:47", 16, "#6ff6ff", MONO, bold=True)
    fill = d.linear(0, 66, 0, 38, (0, "#02fd00"), (1, "#38c700"))
    for bar, height in enumerate(SPECTRUM):
        d.rect(16 + 3 * bar, 66 - height, 2, height, fill)
    d.text(122, 34, TITLES[0][:24], 11, CYAN, SANS)
    _at(d, 122, 40, "wmain", 14)
    _at(d, 157, 48, "wmain", 2)
    d.put(213, 48, sliders.jewel, "n")
    d.put(160, 73, sliders.position_knob, "n")
    for place, index in enumerate((38, 35, 29, 41, 26, 23)):
        _at(d, 16 + 28 * place, 90, "wmain", index)
    _at(d, 224, 90, "wmain", 17)
    for place, index in enumerate((32, 20, 11, 8, 5)):
        _at(d, 16 + 40 * place, 128, "wmain", index)


def _equalizer(d):
    _at(d, 0, 0, "fx", 1)
    _at(d, 249, 2, "wnd", 1)
    for band, top in enumerate(CURVE):
        _at(d, 24 + 16 * band, 24, "fx", 2)
        _at(d, 24 + 16 * band, top, "fx", 20)
    for index, y in ((5, 23), (14, 37), (11, 53), (17, 69)):
        _at(d, 203, y, "fx", index)


def _rows(d, width, height, texts):
    for row, text in enumerate(texts):
        y = 19 + height * row
        if row == 0:
            d.rect(14, y, width, height, d.linear(0, y, 0, y + height, (0, "#0d4a52"), (1, "#08343b")))
        d.text(18, y + height - 4, text, 11, "#eaffff" if row == 0 else CYAN, SANS, alpha=1 if row == 0 else .82)


def _scroll_bar(d, x, height):
    _at(d, x, 19, "scrollBar", 7)
    d.put_cut(x, 35, 16, height - 32, LISTS["scrollBar"][1].draw)
    _at(d, x, 19 + height - 16, "scrollBar", 4)
    _at(d, x, 35, "scrollBar", 10)


def _list_manager(d):
    _at(d, 0, 0, "listmgr", 1)
    _at(d, 249, 2, "wnd", 1)
    _rows(d, 219, 16, ("Internal playlist", "Evenings", "Motorway", "Piano, mostly", "Rain on the roof", "Workshop"))
    _scroll_bar(d, 235, 112)


def _playlist(d):
    _at(d, 0, 0, "pl", 1)
    _at(d, 298, 2, "wnd", 1)
    _rows(d, 268, 14, [f"{row + 1}. {TITLES[row % len(TITLES)]}" for row in range(32)])
    _scroll_bar(d, 284, 448)
    for x, index in ((14, 5), (48, 20), (82, 32), (268, 2)):
        _at(d, x, 471, "pl", index)
    for place, index in enumerate((10, 7, 13, 16)):
        _at(d, 14, 406 + 16 * place, "pl", index)


def _states(d):
    """One column a state, one row a key."""
    for column, state in enumerate("nhp"):
        x = 40 * column
        for row, symbol in enumerate((symbols.BACK, symbols.PLAY, symbols.PAUSE, symbols.STOP, symbols.EJECT, symbols.NEXT)):
            d.put(x, 32 * row, keys.transport_key, symbol, state)
        for row, symbol in enumerate((symbols.LIST, symbols.FOLDER, symbols.SLIDERS, symbols.RECORD, symbols.GEAR)):
            d.put(x + 130, 38 * row, keys.round_key, symbol, state)
        d.put(x, 196, keys.badge, state)
        d.put(x + 132, 196, sliders.speaker, state)
        for row, word in enumerate(("RESET", "LOAD", "SAVE")):
            d.put(46 * column, 232 + 18 * row, keys.equalizer_key, word, state)
        for row, symbol in enumerate((symbols.PLUS, symbols.ORDER, symbols.TRAY, symbols.CROSS)):
            d.put(x + 145, 232 + 20 * row, keys.edge_key, symbol, state)
        for row, word in enumerate(("FILES", "RANDOM")):
            d.put(58 * column, 316 + 18 * row, keys.popout_key, word, state)
        for place, draw in enumerate((keys.scroll_arrow, sliders.scroll_ticker, sliders.position_knob, sliders.jewel)):
            d.put(22 * place + 90 * column, 360, draw, *((True,) if place == 0 else ()), state)
        d.put(95 * column, 384, sliders.volume_scale, state)


def board():
    d = Drawing(960, 600)
    d.rect(0, 0, 960, 600, d.linear(0, 0, 700, 600, (0, "#b9bfc4"), (.5, "#98a0a6"), (1, "#6f777e")))
    for x, y, window in ((40, 40, _main_window), (40, 217, _equalizer), (40, 314, _list_manager), (305, 40, _playlist)):
        d.put(x, y, window)
    d.rect(640, 40, 300, 412, "#33373d")
    d.put(650, 48, _states)
    return d
