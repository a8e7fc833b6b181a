#!/usr/bin/env python3
"""Makes the files that the measurements read: make_files.py DIRECTORY. Ten minutes of music-like sound as WAV, MP3 and Ogg,
a module as long, and 1,000 tagged MP3 files. Files that are there already stay."""
import pathlib
import struct
import subprocess
import sys
import wave

import numpy

RATE = 44100
SECONDS = 600


def make_wav(path):
    random = numpy.random.default_rng(1)
    time = numpy.arange(RATE * 10) / RATE
    with wave.open(str(path), "wb") as file:
        file.setnchannels(2)
        file.setsampwidth(2)
        file.setframerate(RATE)
        for _ in range(SECONDS // 10):
            notes = random.choice([110, 146.8, 164.8, 220, 293.7, 440, 659.3], 5)
            tone = sum(numpy.sin(2 * numpy.pi * note * time) * (0.4 + 0.6 * numpy.sin(time * k)) for k, note in enumerate(notes))
            noise = random.standard_normal((time.size, 2)) * 0.02
            block = (tone[:, None] * [0.11, 0.09] + noise).clip(-1, 1)
            file.writeframes((block * 32767).astype("<i2").tobytes())


def make_module(path):
    """Four channels, 31 samples of which one sounds, 78 patterns at 125 beats and speed 6: 7.68 s each."""
    random = numpy.random.default_rng(2)
    patterns = SECONDS * 100 // 768
    sample = (numpy.sin(numpy.arange(4096) * 2 * numpy.pi / 64) * 90).astype("i1").tobytes()
    header = b"bench".ljust(20, b"\0")
    header += b"sine".ljust(22, b"\0") + struct.pack(">HBBHH", len(sample) // 2, 0, 48, 0, len(sample) // 2)
    header += (b"\0" * 22 + struct.pack(">HBBHH", 0, 0, 0, 0, 1)) * 30
    header += bytes([patterns, 127]) + bytes(range(patterns)).ljust(128, b"\0") + b"M.K."
    periods = [428, 381, 339, 320, 285, 254, 226, 214]
    cells = bytearray()
    for _ in range(patterns * 64 * 4):
        if random.random() < 0.3:
            period = int(random.choice(periods))
            cells += bytes([period >> 8, period & 255, 0x10, 0])
        else:
            cells += b"\0\0\0\0"
    path.write_bytes(header + bytes(cells) + sample)


def id3v2(title, artist):
    def frame(name, text):
        body = b"\x03" + text.encode()
        return name + struct.pack(">I", len(body)) + b"\0\0" + body
    frames = frame(b"TIT2", title) + frame(b"TPE1", artist) + b"\0" * 512
    size = len(frames)
    return b"ID3\x04\0\0" + bytes([(size >> s) & 127 for s in (21, 14, 7, 0)]) + frames


def make_tagged(folder, wav):
    folder.mkdir(exist_ok=True)
    short = folder.parent / "short.mp3"
    head = wav.read_bytes()[:2_000_000]
    subprocess.run(["lame", "--quiet", "-V4", "-", str(short)], check=True, input=head)
    sound = short.read_bytes()
    for number in range(1000):
        title, artist = f"Title number {number}", f"Artist number {number % 37}"
        v1 = b"TAG" + title.encode()[:30].ljust(30, b"\0") + artist.encode()[:30].ljust(30, b"\0") + b"\0" * 64 + b"\x0c"
        (folder / f"{number:04}.mp3").write_bytes(id3v2(title, artist) + sound + v1)


def main():
    top = pathlib.Path(sys.argv[1])
    top.mkdir(parents=True, exist_ok=True)
    wav = top / "long.wav"
    if not wav.exists():
        make_wav(wav)
    if not (top / "long.mp3").exists():
        subprocess.run(["lame", "--quiet", "-b", "192", str(wav), str(top / "long.mp3")], check=True)
    if not (top / "long.ogg").exists():
        subprocess.run(["oggenc", "-Q", "-q", "5", "-o", str(top / "long.ogg"), str(wav)], check=True)
    if not (top / "long.mod").exists():
        make_module(top / "long.mod")
    if not (top / "tagged" / "0999.mp3").exists():
        make_tagged(top / "tagged", wav)


if __name__ == "__main__":
    main()
