"""The scores of the four rendered demo pieces.

Each function returns (rate, stereo signal). Chords are written as "bass:upper
notes", melodies as "note:beats" with "r" for a rest.
"""

import numpy as np

from demo_synth import Mix, Voices, parse, pitch

_HARBOUR_A = ["D2:F#3 A3 C#4 E4", "B1:A3 C#4 D4 F#4", "G1:F#3 A3 B3 D4", "A1:G3 B3 D4 E4"]
_HARBOUR_B = ["E2:G3 B3 D4 F#4", "F#2:E3 A3 C#4 E4", "G1:F#3 B3 D4 E4", "A1:G3 B3 D4 E4",
              "E2:G3 B3 D4 F#4", "F#2:E3 A3 C#4 E4", "Bb1:A3 D4 E4 F4", "A1:G3 B3 D4 E4"]
_HARBOUR_TUNE_A = """A4:1 E5:1.5 D5:.5 C#5:1 | D5:1.5 C#5:.5 A4:2 | B4:1 F#5:1.5 E5:.5 D5:1
    | E5:3 r:1 | A4:1 E5:1.5 F#5:.5 A5:1 | F#5:1.5 E5:.5 C#5:2
    | D5:1 B4:1 A4:.5 B4:.5 D5:1 | E5:1 D5:.5 B4:.5 A4:2"""
_HARBOUR_TUNE_B = """G5:1.5 F#5:.5 D5:1 B4:1 | C#5:1.5 E5:.5 A4:2
    | B4:.5 D5:.5 F#5:1 A5:1.5 G5:.5 | E5:3 r:1 | G5:1.5 F#5:.5 B5:1 A5:1
    | E5:1.5 C#5:.5 A5:2 | F5:1 E5:1 D5:1 A4:1 | B4:1 D5:1 E5:2"""
_HARBOUR_TUNE_END = """A4:1 E5:1.5 D5:.5 C#5:1 | D5:1.5 C#5:.5 A4:2
    | B4:1 F#5:1.5 E5:.5 D5:1 | E5:1.5 D5:.5 B4:1 A4:1 | F#5:1.5 E5:.5 D5:1 B4:1
    | A4:1 B4:1 D5:1 E5:1 | F#5:5"""


def _chord(text):
    bass, upper = text.split(":")
    return pitch(bass), [pitch(name) for name in upper.split()]


def _loose(voices, seconds=0.005):
    """A small random offset, as a player's hand gives."""
    return float(voices.random.normal(0, seconds))


def harbour():
    """The long piece: 92 beats a minute in D, intro, A, B, A, a held ending."""
    rate, beat = 44100, 60 / 92
    voices, mix = Voices(rate, 11), Mix(rate, 28 * 4 * beat + 4)
    bars = _HARBOUR_A * 3 + _HARBOUR_B + _HARBOUR_A + _HARBOUR_A[2:] + ["D2:F#3 A3 C#4 E4"]
    for bar, text in enumerate(bars):
        _harbour_harmony(voices, mix, bar, text, beat)
        if 4 <= bar < 26:
            _harbour_drums(voices, mix, bar, beat)
    for first, tune in ((4, _HARBOUR_TUNE_A), (12, _HARBOUR_TUNE_B), (20, _HARBOUR_TUNE_END)):
        for at, length, note in parse(tune):
            when = (4 * first + at) * beat + _loose(voices)
            mix.echo(when, voices.lead(note, length * beat), 0.17, 0.75 * beat, 0.12, 0.3)
            if first != 4:
                mix.echo(when, voices.pluck(note + 12, length * beat), 0.05, 0.75 * beat, -0.3)
    for step, name in enumerate(("D5", "A5", "C#6", "F#6", "E6", "A6")):
        mix.echo((26 * 4 + 1 + step * 0.5) * beat, voices.bell(pitch(name), 3.5), 0.06, beat, 0.5)
    return rate, mix.finish(21, 2.6, 4.0)


def _harbour_harmony(voices, mix, bar, text, beat):
    bass, upper = _chord(text)
    start, length = bar * 4 * beat, (8 if bar == 26 else 4) * beat
    for voice, note in enumerate(upper):
        pan = -0.7 + 1.4 * voice / (len(upper) - 1)
        mix.add(start - 0.15, voices.pad(note, length), 0.075, pan, 0.35)
        if bar >= 4:
            mix.add(start + 0.012 * voice, voices.keys(note, length * 0.9), 0.065, -pan / 2)
    if bar == 26:
        mix.add(start, voices.bass(bass, length), 0.30, 0, 0.03)
        return
    if bar >= 2:
        for at, size, up in ((0, 1.5, 0), (1.5, 1, 0), (2.5, 1, 7 if bar % 2 else 12)):
            mix.add((at * beat) + start, voices.bass(bass + up, size * beat), 0.25, 0, 0.03)
    order = [0, 2, 1, 3, 2, 1, 3, 0] if bar % 2 else [0, 1, 2, 3, 1, 3, 2, 1]
    for step, index in enumerate(order):
        level = (0.11 if step % 2 == 0 else 0.08) * voices.random.uniform(0.8, 1.1)
        when = start + step * beat / 2 + _loose(voices, 0.003)
        pluck = voices.pluck(upper[index] + 12, 0.4)
        mix.echo(when, pluck, level, 0.75 * beat, 0.55 if step % 2 else -0.55)


def _harbour_drums(voices, mix, bar, beat):
    start = bar * 4 * beat
    for at in (0, 1.5, 2) if bar % 2 else (0, 2.5):
        mix.add(start + at * beat, voices.kick(), 0.36, 0, 0.02)
    for at in (1, 3):
        mix.add(start + at * beat, voices.noise(0.22, 900, 6000, 22), 0.14, 0.1, 0.35)
    for step in range(8):
        late = 0.04 * beat if step % 2 else 0.0
        level = (0.04, 0.08)[step % 2] * voices.random.uniform(0.8, 1.1)
        hat = voices.noise(0.09, 6500, 15000, 55 if step % 4 != 3 else 30)
        mix.add(start + step * beat / 2 + late, hat, level, -0.35, 0.12)
    if bar in (11, 19):
        for step in range(6):
            brush = voices.noise(0.12, 1500, 9000, 30)
            mix.add(start + (3 + step / 6) * beat, brush, 0.05 + 0.015 * step, 0.3, 0.3)


_FERRY_CHORDS = ["F2:A3 C4 E4 G4", "D2:F3 A3 C4 E4", "Bb1:A3 C4 D4 F4", "C2:Bb3 D4 F4 A4",
                 "A1:G3 C4 E4 G4", "D2:F3 A3 C4 E4", "G1:F3 Bb3 D4 A4", "C2:Bb3 D4 E4 A4"]
_FERRY_TUNE = """C5:1.5 A4:.5 G4:1 | A4:2 E5:1 | D5:1.5 C5:.5 A4:1 | G4:2.5 r:.5
    | G4:1 C5:1 E5:1 | F5:1.5 E5:.5 C5:1 | D5:1 Bb4:1 A4:1 | G4:2 r:1
    | C5:1 E5:.5 G5:1.5 | F5:1.5 E5:.5 A4:1 | D5:1 F5:1 A5:1 | G5:2.5 r:.5
    | E5:1.5 D5:.5 C5:1 | A4:1 C5:1 E5:1 | D5:1.5 C5:.5 Bb4:1 | A4:1 G4:1 E4:1 | F4:3"""


def ferry():
    """A slow waltz in F for electric piano, bass and brushes, 84 a minute."""
    rate, beat = 44100, 60 / 84
    voices, mix = Voices(rate, 12), Mix(rate, 16 * 3 * beat + 5)
    for bar, text in enumerate(_FERRY_CHORDS * 2):
        start, (bass, upper) = bar * 3 * beat, _chord(text)
        mix.add(start + _loose(voices), voices.bass(bass, 1.9 * beat), 0.30, 0, 0.04)
        mix.add(start + 2 * beat, voices.bass(bass + (7 if bar % 2 else 12), 0.9 * beat), 0.24)
        for at, length in ((1, 0.8), (2, 0.9)) if bar % 4 != 3 else ((0.5, 2.4),):
            for voice, note in enumerate(upper):
                when = start + at * beat + 0.008 * voice + _loose(voices)
                mix.add(when, voices.keys(note, length * beat), 0.09, 0.35 - 0.2 * voice, 0.25)
        for at, level in ((0, 0.03), (1, 0.08), (1.67, 0.03), (2, 0.07), (2.67, 0.04)):
            brush = voices.noise(0.28, 2500, 11000, 16)
            mix.add(start + at * beat + _loose(voices), brush, level, -0.3, 0.2)
        if bar >= 8:
            for voice, note in enumerate(upper):
                mix.add(start, voices.pad(note, 3 * beat), 0.05, 0.6 - 0.4 * voice, 0.4)
    for at, length, note in parse(_FERRY_TUNE):
        when = at * beat + _loose(voices, 0.008)
        mix.add(when, voices.keys(note, length * beat + 0.2), 0.24, 0.15, 0.3)
        if 24 <= at < 48:
            mix.add(when, voices.lead(note, length * beat), 0.06, -0.25, 0.5)
    for voice, name in enumerate(("F2", "C3", "A3", "C4", "E4", "G4")):
        keys = voices.keys(pitch(name), 3.5)
        mix.add(48 * beat + 0.05 * voice, keys, 0.15, 0.5 - 0.2 * voice, 0.4)
    return rate, mix.finish(22, 2.0, 3.0)


def chime():
    """Five bells that rise and settle: four and a half seconds."""
    rate = 44100
    voices, mix = Voices(rate, 13), Mix(rate, 4.5)
    phrase = ((0.02, "G4", -0.5), (0.36, "D5", 0.4), (0.70, "A5", -0.2), (1.04, "F#5", 0.5),
              (1.72, "B5", 0.0))
    for at, name, pan in phrase:
        mix.add(at, voices.bell(pitch(name), 2.7), 0.3, pan, 0.3)
    mix.add(1.72, voices.bell(pitch("G4"), 2.7), 0.2, -0.3, 0.3)
    return rate, mix.finish(23, 1.6, 1.8, peak_db=-1.0, rms_db=-18.0)


_RAIN_CHORDS = ["E2:G3 B3 D4 F#4", "C2:G3 B3 D4 E4", "A1:G3 B3 C4 E4", "B1:A3 D4 E4 F#4"]
_RAIN_TUNE = """B4:.75 E5:.75 F#5:1 D5:1.5 | G5:1 F#5:.5 E5:.5 B4:2
    | C5:.75 E5:.75 A5:1 G5:1.5 | F#5:1 E5:.5 D5:.5 E5:2"""


def rain():
    """Four bars of mallets in sixteenths, 104 a minute, at 48 kHz."""
    rate, beat = 48000, 60 / 104
    voices, mix = Voices(rate, 14), Mix(rate, 16 * beat + 2.8)
    order = [0, 2, 3, 1, 2, 0, 3, 2]
    for bar, text in enumerate(_RAIN_CHORDS):
        start, (bass, upper) = bar * 4 * beat, _chord(text)
        for at, length in ((0, 1.4), (1.5, 1), (3, 0.9)):
            mix.add(start + at * beat, voices.bass(bass, length * beat), 0.30, 0, 0.03)
        for voice, note in enumerate(upper):
            mix.add(start, voices.pad(note, 4 * beat), 0.05, -0.6 + 0.4 * voice, 0.4)
        for step in range(16):
            note = upper[order[(step + bar) % 8]] + (24 if step % 3 == 0 else 12)
            level = (0.15 if step % 3 == 0 else 0.09) * voices.random.uniform(0.85, 1.1)
            pan = 0.7 * np.sin(2 * np.pi * (step + 16 * bar) / 21)
            mix.add(start + step * beat / 4, voices.pluck(note, 0.3), level, pan, 0.3)
        for at in (0, 2.5):
            mix.add(start + at * beat, voices.kick(), 0.36, 0, 0.02)
    for at, length, note in parse(_RAIN_TUNE):
        mix.echo(at * beat, voices.pluck(note, length * beat), 0.22, 0.75 * beat, 0.2)
        mix.add(at * beat, voices.lead(note, length * beat), 0.07, -0.2, 0.4)
    for voice, name in enumerate(("E2", "B3", "F#4", "G4", "D5", "E6")):
        mix.add(16 * beat + 0.03 * voice, voices.keys(pitch(name), 2), 0.12, 0.5 - 0.2 * voice)
    return rate, mix.finish(24, 1.8, 2.4)
