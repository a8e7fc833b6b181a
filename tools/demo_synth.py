"""Instruments, effects and mastering for the demo music.

Every voice is a sum of sines or of shaped noise, so nothing aliases, and every
voice starts and ends at zero, so nothing clicks. Signals are float64 numpy
arrays: one channel has the shape (n,), a stereo mix has the shape (n, 2).
"""

import numpy as np

_STEPS = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}


def pitch(name):
    """The MIDI number of a note name such as "F#4" or "Bb1" (C4 is 60)."""
    accidental = {"#": 1, "b": -1}.get(name[1], 0)
    return _STEPS[name[0]] + accidental + 12 * (int(name[-1]) + 1)


def hertz(note):
    """The frequency of a MIDI number, A4 = 440 Hz."""
    return 440.0 * 2.0 ** ((note - 69) / 12.0)


def parse(line):
    """Yields (start, length, note) in beats from "A4:1 r:0.5 ..."."""
    at = 0.0
    for item in line.replace("|", " ").split():
        name, beats = item.split(":")
        if name != "r":
            yield at, float(beats), pitch(name)
        at += float(beats)


def edges(signal, rate, attack=0.004, release=0.02):
    """Raises and lowers both ends of a voice by raised cosines (seconds)."""
    up = min(int(attack * rate), len(signal) // 2)
    down = min(int(release * rate), len(signal) // 2)
    signal[:up] *= 0.5 - 0.5 * np.cos(np.pi * np.arange(up) / up)
    signal[-down:] *= 0.5 + 0.5 * np.cos(np.pi * np.arange(1, down + 1) / down)
    return signal


def shape(signal, rate, gain_of_hz):
    """Filters without phase shift: gain_of_hz maps an array of Hz to gains."""
    size = 1 << int(np.ceil(np.log2(len(signal) + rate // 2)))
    bins = np.fft.rfftfreq(size, 1.0 / rate)
    spectrum = np.fft.rfft(signal, size) * gain_of_hz(bins)
    return np.fft.irfft(spectrum, size)[: len(signal)]


class Voices:
    """The instruments at one sample rate; the noise comes from one seed."""

    def __init__(self, rate, seed):
        self.rate = rate
        self.random = np.random.default_rng(seed)

    def _time(self, seconds):
        return np.arange(int(seconds * self.rate)) / self.rate

    def keys(self, note, seconds):
        """An electric piano: two-operator FM with a short tine on top."""
        t, f = self._time(seconds + 0.5), hertz(note)
        index = 1.4 * np.exp(-t * 3.0) + 0.25
        body = np.sin(2 * np.pi * f * t + index * np.sin(2 * np.pi * f * t))
        tine = 0.16 * np.exp(-t * 16.0) * np.sin(2 * np.pi * 7.0 * f * t)
        tremolo = 1.0 + 0.08 * np.sin(2 * np.pi * 4.6 * t)
        return edges((body + tine) * tremolo * np.exp(-t * 1.3), self.rate, 0.004, 0.4)

    def pad(self, note, seconds):
        """A slow string-like pad of three detuned, softened saws."""
        t, f = self._time(seconds + 1.2), hertz(note)
        out = np.zeros_like(t)
        for cents in (-7.0, 0.5, 6.0):
            base = f * 2.0 ** (cents / 1200.0)
            for k in range(1, int(min(14, 5000 // base)) + 1):
                phase = self.random.uniform(0, 2 * np.pi)
                gain = np.exp(-k * base / 1500.0) / k
                out += gain * np.sin(2 * np.pi * k * base * t + phase)
        return edges(out / 3.0, self.rate, 0.9, 1.3)

    def bass(self, note, seconds):
        """A round bass: a few harmonics that die faster than the root."""
        t, f = self._time(seconds + 0.1), hertz(note)
        out = np.sin(2 * np.pi * f * t)
        for k, gain in ((2, 0.45), (3, 0.22), (4, 0.10), (5, 0.06)):
            out += gain * np.exp(-t * 1.8 * k) * np.sin(2 * np.pi * k * f * t)
        return edges(out * np.exp(-t * 0.8), self.rate, 0.008, 0.12)

    def pluck(self, note, seconds):
        """A small mallet: root, twelfth and a bright strike."""
        t, f = self._time(seconds + 0.9), hertz(note)
        out = np.exp(-t * 4.0) * np.sin(2 * np.pi * f * t)
        out += 0.30 * np.exp(-t * 9.0) * np.sin(2 * np.pi * 3.0 * f * t)
        out += 0.22 * np.exp(-t * 22.0) * np.sin(2 * np.pi * 6.27 * f * t)
        return edges(out, self.rate, 0.002, 0.3)

    def lead(self, note, seconds):
        """A flute-like lead; its vibrato comes in after the attack."""
        t, f = self._time(seconds + 0.12), hertz(note)
        depth = 0.0035 * np.clip((t - 0.25) / 0.5, 0, 1)
        phase = 2 * np.pi * np.cumsum(f * (1 + depth * np.sin(2 * np.pi * 5.1 * t))) / self.rate
        out = np.sin(phase) + 0.30 * np.sin(2 * phase) + 0.16 * np.sin(3 * phase)
        out += 0.05 * np.sin(5 * phase)
        return edges(out * (0.75 + 0.25 * np.exp(-t * 2.0)), self.rate, 0.04, 0.16)

    def bell(self, note, seconds):
        """A bell of inharmonic partials; the high ones die first."""
        t, f = self._time(seconds), hertz(note)
        out = np.zeros_like(t)
        for ratio, gain, decay in ((0.5, 0.30, 0.9), (1.0, 1.0, 1.3), (2.0, 0.45, 2.2),
                                   (2.41, 0.30, 3.0), (3.01, 0.22, 4.0), (5.43, 0.14, 7.0),
                                   (8.21, 0.07, 12.0)):
            if ratio * f < 0.42 * self.rate:
                out += gain * np.exp(-t * decay) * np.sin(2 * np.pi * ratio * f * t)
        return edges(out, self.rate, 0.002, 0.6)

    def kick(self):
        """A soft kick: a sine that falls from 120 to 48 Hz."""
        t = self._time(0.32)
        phase = 2 * np.pi * np.cumsum(48 + 72 * np.exp(-t * 30)) / self.rate
        return edges(np.sin(phase) * np.exp(-t * 11), self.rate, 0.003, 0.08)

    def noise(self, seconds, low, high, decay):
        """A burst of noise between two frequencies: hats, brushes, shakers."""
        t = self._time(seconds)
        raw = self.random.standard_normal(len(t))
        band = shape(raw, self.rate, lambda hz: 1 / (1 + (low / np.maximum(hz, 1)) ** 6)
                     / (1 + (hz / high) ** 6))
        return edges(band * np.exp(-t * decay), self.rate, 0.003, seconds / 3)


class Mix:
    """A stereo mix of one length with a dry bus and a bus to the reverb."""

    def __init__(self, rate, seconds):
        self.rate = rate
        self.dry = np.zeros((int(seconds * rate), 2))
        self.wet = np.zeros_like(self.dry)

    def add(self, at, voice, gain, pan=0.0, send=0.2):
        """Lays a voice at a time in seconds; pan is -1 (left) to 1 (right)."""
        start = max(0, int(at * self.rate))
        part = voice[: max(0, len(self.dry) - start)]
        angle = (pan + 1) * np.pi / 4
        both = gain * part[:, None] * np.array([np.cos(angle), np.sin(angle)])
        self.dry[start : start + len(part)] += both
        self.wet[start : start + len(part)] += send * both

    def echo(self, at, voice, gain, delay, pan=0.4, send=0.3):
        """Lays a voice with three softer repeats that cross the stereo field."""
        for repeat, level in enumerate((1.0, 0.34, 0.17, 0.08)):
            side = pan if repeat % 2 == 0 else -pan
            self.add(at + repeat * delay, voice, gain * level, side, send + 0.1 * repeat)

    def finish(self, seed, tail, fade, peak_db=-1.2, rms_db=-17.0):
        """Adds the reverb, takes the lows in hand, fades and masters."""
        out = self.dry + reverb(self.wet, self.rate, tail, seed)
        for channel in (0, 1):
            out[:, channel] = shape(out[:, channel], self.rate, _tone)
        count = int(fade * self.rate)
        out[-count:] *= (0.5 + 0.5 * np.cos(np.pi * np.arange(1, count + 1) / count))[:, None]
        return master(out, self.rate, peak_db, rms_db)


def _tone(hz):
    """The tone of every mix: nothing under 28 Hz, a little air on top."""
    low_cut = 1 / (1 + (28 / np.maximum(hz, 0.01)) ** 8)
    return low_cut * (1 + 0.5 / (1 + (3500 / np.maximum(hz, 1)) ** 4))


def reverb(signal, rate, tail, seed):
    """Convolves with two decaying noises whose high band dies sooner."""
    random = np.random.default_rng(seed)
    t = np.arange(int(tail * 1.3 * rate)) / rate
    out = np.zeros_like(signal)
    for channel in (0, 1):
        raw = random.standard_normal(len(t))
        dull = shape(raw, rate, lambda hz: 1 / (1 + (hz / 1800) ** 2))
        room = dull * np.exp(-6.9 * t / tail) + 0.45 * (raw - dull) * np.exp(-17 * t / tail)
        room = edges(room, rate, 0.012, 0.2)
        room /= np.sqrt(np.sum(room**2))
        size = 1 << int(np.ceil(np.log2(len(signal) + len(room))))
        product = np.fft.rfft(signal[:, channel], size) * np.fft.rfft(room, size)
        out[:, channel] = np.fft.irfft(product, size)[: len(signal)]
    return out


def master(signal, rate, peak_db, rms_db):
    """Sets the loudness, then holds the peaks by a look-ahead limiter."""
    ceiling = 10 ** (peak_db / 20)
    out = signal * 10 ** (rms_db / 20) / np.sqrt(np.mean(signal**2))
    out *= max(1.0, ceiling / np.max(np.abs(out)))
    reach = int(0.012 * rate)
    wanted = np.minimum(1.0, ceiling / np.maximum(np.max(np.abs(out), axis=1), 1e-9))
    padded = np.pad(wanted, reach, constant_values=1.0)
    windows = np.lib.stride_tricks.sliding_window_view(padded, 2 * reach + 1)
    held = np.concatenate([part.min(axis=1) for part in np.array_split(windows, 64)])
    window = np.hanning(2 * reach + 1)[1:-1]
    gain = np.convolve(np.pad(held, reach - 1, mode="edge"), window / window.sum(), "valid")
    return out * gain[:, None]


def to_pcm(signal, seed):
    """16-bit samples with triangular dither."""
    random = np.random.default_rng(seed)
    dither = random.uniform(-0.5, 0.5, signal.shape) + random.uniform(-0.5, 0.5, signal.shape)
    quiet = np.max(np.abs(signal), axis=1) < 1e-5
    dither[quiet] = 0.0
    return np.clip(np.round(signal * 32767 + dither), -32768, 32767).astype("<i2")
