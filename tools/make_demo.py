#!/usr/bin/python3
"""Makes the demo music in demo/ from nothing but the scores beside this file.

Needs python3-numpy, vorbis-tools, lame and flac. The seeds are fixed, so the
same tools give the same music again.

Usage: tools/make_demo.py [folder]
"""

import pathlib
import struct
import subprocess
import sys
import tempfile

from demo_module import write_module
from demo_pieces import chime, ferry, harbour, rain
from demo_synth import to_pcm

ARTIST = "Velmo Ensemble"
ALBUM = "Small Instruments"
YEAR = "2026"


def wave_bytes(rate, signal, info=()):
    """A RIFF file of 16-bit stereo; info gives the chunks of a LIST INFO."""
    data = to_pcm(signal, 31).tobytes()
    chunks = b"fmt " + struct.pack("<IHHIIHH", 16, 1, 2, rate, rate * 4, 4, 16)
    chunks += b"data" + struct.pack("<I", len(data)) + data
    entries = b"INFO"
    for key, text in info:
        value = text.encode("ascii") + b"\0"
        entries += key + struct.pack("<I", len(value)) + value + b"\0" * (len(value) % 2)
    if info:
        chunks += b"LIST" + struct.pack("<I", len(entries)) + entries
    return b"RIFF" + struct.pack("<I", 4 + len(chunks)) + b"WAVE" + chunks


def id3v1(title, artist, album, comment, track):
    """The 128 bytes of an ID3v1.1 tag in Latin-1, genre 26 (Ambient)."""
    fields = ((title, 30), (artist, 30), (album, 30), (YEAR, 4), (comment, 28))
    texts = b"".join(text.encode("latin-1")[:size].ljust(size, b"\0") for text, size in fields)
    return b"TAG" + texts + bytes([0, track, 26])


def id3v2(frames):
    """An ID3v2.3 tag of UTF-16 text frames with 256 bytes of padding."""
    body = b""
    for key, text in frames:
        data = b"\x01" + b"\xff\xfe" + text.encode("utf-16-le")
        if key == "COMM":
            data = b"\x01eng\xff\xfe\0\0\xff\xfe" + text.encode("utf-16-le")
        body += key.encode("ascii") + struct.pack(">IH", len(data), 0) + data
    body += b"\0" * 256
    size = bytes(len(body) >> shift & 0x7F for shift in (21, 14, 7, 0))
    return b"ID3\x03\x00\x00" + size + body


def encode(command, wave, target):
    """Runs an encoder on a rendered piece by way of a private file."""
    with tempfile.TemporaryDirectory() as folder:
        source = pathlib.Path(folder) / "piece.wav"
        source.write_bytes(wave)
        words = [str(target) if word == "OUT" else str(source) if word == "IN" else word
                 for word in command]
        subprocess.run(words, check=True)


def make_ogg(target):
    encode(["oggenc", "--quiet", "-q", "4", "--serial", "1", "-c", "TITLE=Harbour in Glass",
            "-c", f"ARTIST={ARTIST}", "-c", f"ALBUM={ALBUM}", "-c", f"DATE={YEAR}", "-c",
            "GENRE=Ambient", "-c", "TRACKNUMBER=1", "-o", "OUT", "IN"],
           wave_bytes(*harbour()), target)


def make_mp3(target):
    encode(["lame", "--quiet", "-V", "4", "IN", "OUT"], wave_bytes(*ferry()), target)
    head = id3v2([("TIT2", "The Night Ferry to Skärgården, Slowly"), ("TPE1", ARTIST),
                  ("TALB", ALBUM), ("TYER", YEAR), ("TRCK", "2"), ("TCON", "Ambient"),
                  ("COMM", "This text is in the ID3v2 tag.")])
    tail = id3v1("The Night Ferry", "Velmo Ensemble, Small Group", "Small Instruments (v1)",
                 "From the ID3v1 tag.", 12)
    target.write_bytes(head + target.read_bytes() + tail)


def make_wav(target):
    info = ((b"INAM", "Five Little Bells"), (b"IART", ARTIST), (b"IPRD", ALBUM),
            (b"ICRD", YEAR), (b"IGNR", "Ambient"))
    target.write_bytes(wave_bytes(*chime(), info))


def make_flac(target):
    tags = {"TITLE": "Rain on the Bench", "ARTIST": ARTIST, "ALBUM": ALBUM, "DATE": YEAR,
            "GENRE": "Ambient", "TRACKNUMBER": "4"}
    encode(["flac", "--silent", "--force", "-8", *(f"--tag={k}={v}" for k, v in tags.items()),
            "-o", "OUT", "IN"], wave_bytes(*rain()), target)


def main():
    default = pathlib.Path(__file__).resolve().parent.parent / "demo"
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else default
    folder.mkdir(parents=True, exist_ok=True)
    make_ogg(folder / "harbour-in-glass.ogg")
    make_mp3(folder / "night-ferry.mp3")
    make_wav(folder / "five-little-bells.wav")
    make_flac(folder / "rain-on-the-bench.flac")
    write_module(folder / "pocket-lighthouse.mod", "pocket lighthouse",
                 ["a small tune for four", "channels and six chips", "by velmo ensemble"])


if __name__ == "__main__":
    main()
