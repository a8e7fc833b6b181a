"""A four-channel ProTracker module: its samples, its tune and its file.

Layout of the file, big-endian: 20 bytes of title, 31 sample headers of 30
bytes, the song length, a byte 127, 128 order bytes, "M.K.", the patterns of
64 rows by 4 channels by 4 bytes, then the 8-bit signed sample data. A cycle
of 32 bytes played at period 428 sounds as C4, so "C4" is written as 428.
"""

import struct

import numpy as np

from demo_synth import parse, pitch

_PERIODS = [int(round(428 * 2 ** (-step / 12))) for step in range(-12, 24)]
_BASS, _PLUCK, _LEAD, _KICK, _SNARE, _HAT = range(1, 7)
_CHORDS = {
    "Am": ("A", "C4 E4 G4 B4"), "F": ("F", "C4 E4 A4 C5"), "C": ("C", "C4 E4 G4 B4"),
    "G": ("G", "D4 G4 A4 B4"), "Dm": ("D", "D4 F4 A4 C5"), "E": ("E", "D4 E4 G#4 B4"),
}
_TUNE_A = """E5:1.5 D5:.5 C5:1 A4:1 | C5:1.5 D5:.5 A4:2 | G4:.5 C5:.5 E5:1 G5:1.5 E5:.5
    | D5:3 r:1"""
_TUNE_B = """F5:1 E5:.5 D5:.5 A4:2 | C5:.5 D5:.5 E5:1 G5:1 E5:1 | A5:1.5 G5:.5 E5:1 C5:1
    | B4:1 D5:1 E5:1 G#4:1"""
_TUNE_END = "E5:1.5 D5:.5 C5:1 A4:1 | C5:1 A4:1 F4:2 | G4:1 C5:1 B4:1 D5:1 | E5:4"


def _bytes(signal, level=120):
    return np.round(signal / np.max(np.abs(signal)) * level).astype(np.int8).tobytes()


def _decayed(cycle, cycles, rate):
    """A cycle repeated and faded to nothing over its length."""
    wave = np.tile(cycle, cycles)
    t = np.arange(len(wave)) / len(wave)
    return wave * np.exp(-rate * t) * (1 - t) * np.minimum(1, np.arange(len(wave)) / 8)


def _samples():
    """(name, data, loop start or None, volume), in the order of the numbers."""
    random = np.random.default_rng(15)
    turn32, turn128 = (2 * np.pi * np.arange(n) / n for n in (32, 128))
    bass = sum(np.sin(k * turn128) / k**1.3 for k in range(1, 12))
    pluck = np.sin(turn32) + 0.5 * np.sin(2 * turn32) + 0.3 * np.sin(5 * turn32)
    lead = sum(np.sin(k * turn32) / k for k in (1, 3, 5, 7)) + 0.25 * np.sin(2 * turn32)
    t = np.arange(2400) / 2400
    kick = np.sin(2 * np.pi * np.cumsum(0.004 + 0.012 * np.exp(-t * 14))) * (1 - t) ** 2
    hiss = random.standard_normal(2400)
    snare = (hiss + 0.8 * np.sin(np.arange(2400) * 0.14)) * np.exp(-6 * t) * (1 - t)
    hat = np.diff(random.standard_normal(901)) * np.exp(-6 * t[:900]) * (1 - t[:900]) ** 2
    for burst in (snare, hat):
        burst[:8] *= np.arange(8) / 8
    mallet = _decayed(pluck, 150, 4)
    return [("round bass", _bytes(bass), 0, 52), ("small mallet", _bytes(mallet), None, 40),
            ("soft square", _bytes(lead), 0, 34), ("kick", _bytes(kick), None, 56),
            ("brush", _bytes(snare), None, 26), ("hat", _bytes(hat), None, 18)]


def _cell(note=None, sample=0, effect=0, value=0):
    period = 0 if note is None else _PERIODS[note - 48]
    return bytes([(sample & 0xF0) | period >> 8, period & 0xFF, (sample & 15) << 4 | effect, value])


class _Pattern:
    def __init__(self):
        self.rows = [[_cell() for _ in range(4)] for _ in range(64)]

    def put(self, row, channel, *cell):
        self.rows[row][channel] = _cell(*cell)

    def data(self):
        return b"".join(cell for row in self.rows for cell in row)

    def bass(self, chords):
        for bar, name in enumerate(chords):
            root = pitch(_CHORDS[name][0] + "4")
            for row, up in ((0, 0), (6, 0), (10, 12), (14, 7)):
                note = root + up if root + up <= 83 else root
                self.put(16 * bar + row, 0, note, _BASS)
                self.put(16 * bar + row + 1, 0, None, 0, 0xA, 0x04)
                if row < 14:
                    self.put(16 * bar + row + 2, 0, None, 0, 0xA, 0x06)

    def arpeggio(self, chords, level):
        for bar, name in enumerate(chords):
            notes = [pitch(each) for each in _CHORDS[name][1].split()]
            for step, index in enumerate((0, 1, 2, 3, 2, 1, 3, 2)):
                row = 16 * bar + 2 * step
                self.put(row, 1, notes[index], _PLUCK, 0xC, level if step % 2 == 0 else level - 8)
                self.put(row + 1, 1, notes[index] + 12 if notes[index] < 72 else notes[index],
                         _PLUCK, 0xC, level // 3)

    def tune(self, line):
        """The lead: vibrato on long notes, a slide to silence at each end."""
        for at, length, note in parse(line):
            first, count = int(4 * at), int(4 * length)
            self.put(first, 2, note, _LEAD)
            for row in range(first + 1, first + count):
                fading = row >= first + max(1, count - 3)
                self.put(row, 2, None, 0, *((0xA, 0x03) if fading else (0x4, 0x42)))

    def drums(self, last):
        for row in range(0, last, 2):
            if row % 16 in (0, 10):
                self.put(row, 3, pitch("C4"), _KICK)
            elif row % 16 in (4, 12):
                self.put(row, 3, pitch("C5"), _SNARE)
            else:
                self.put(row, 3, pitch("F5"), _HAT, 0xC, 18 if row % 4 else 11)


def _patterns():
    """Intro, A, B and an ending whose last bar dies away."""
    first, second = ("Am", "F", "C", "G"), ("Dm", "C", "F", "E")
    intro, part_a, part_b, ending = (_Pattern() for _ in range(4))
    intro.arpeggio(first, 34)
    intro.bass(first)
    for part, chords, tune in ((part_a, first, _TUNE_A), (part_b, second, _TUNE_B)):
        part.bass(chords)
        part.arpeggio(chords, 30)
        part.tune(tune)
        part.drums(64)
    ending.bass(("Am", "F", "G"))
    ending.arpeggio(("Am", "F", "G"), 28)
    ending.tune(_TUNE_END)
    ending.drums(48)
    ending.put(48, 0, pitch("A4"), _BASS)
    for row in range(49, 64):
        ending.put(row, 0, None, 0, *((0xA, 0x01) if row < 60 else (0xA, 0x04)))
    for step, name in enumerate(("A4", "C5", "E5", "B5")):
        ending.put(48 + step, 1, pitch(name), _PLUCK, 0xC, 34 - 4 * step)
    intro.put(0, 3, None, 0, 0xF, 108)
    return [intro, part_a, part_b, ending]


def write_module(path, title, message):
    """Writes the module; message lines stand as the names of unused samples."""
    order = [0, 1, 2, 1, 2, 3]
    samples, patterns = _samples(), _patterns()
    head = title.encode("ascii").ljust(20, b"\0")
    for number in range(31):
        if number < len(samples):
            name, data, loop, volume = samples[number]
            repeat = (0, len(data) // 2) if loop is not None else (0, 1)
            lengths = (len(data) // 2, 0, volume, *repeat)
        else:
            line = number - len(samples) - 1
            name, lengths = (message[line] if 0 <= line < len(message) else ""), (0, 0, 0, 0, 1)
        head += name.encode("ascii").ljust(22, b"\0") + struct.pack(">HBBHH", *lengths)
    head += bytes([len(order), 127, *order]).ljust(130, b"\0") + b"M.K."
    body = b"".join(each.data() for each in patterns) + b"".join(each[1] for each in samples)
    path.write_bytes(head + body)
