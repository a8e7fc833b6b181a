#!/usr/bin/env python3
"""What the whole program costs while it plays: program_cost.py PLAYER PLAIN_PICTURE MUSIC_FILE [--threads]

Plays the file into the null output, on the display of the environment, and counts the processor time that its threads get, as
the kernel tells it in nanoseconds. The server's share is not in it. What a wake-up costs differs between machines, and on one
machine from hour to hour, by more than a factor of two; so each figure is set against that of a plain picture of the toolkit's,
measured in turns with it."""
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

ROUNDS = 3
SETTLING = 4.0  # seconds until start and first decoding ahead are over
SECONDS = 15.0
FOUR_WINDOWS = "[RTM]\nShowPL=True\nShowFX=True\nShowPLMGR=True\n"
SPECTRUM = "[Visualisation]\nMode=Spectrum\nSpectrumStyle=Linear\nRefreshRateFPS=40\n"
EQUALIZER = "[DSP\\Effects]\nEQEnabled=True\n"
PLAIN = "[DSP\\Effects]\nEQEnabled=False\n"

# Per cent of a core that the plain picture takes where these bars were set.
YARDSTICK = 0.67
# What is measured, the settings that make it so, and at most so many per cent of a core there.
CASES = [
    ("equalizer and spectrum at 40 frames/s", SPECTRUM + EQUALIZER, 1.0),
    ("spectrum at 40 frames/s, four windows", FOUR_WINDOWS + SPECTRUM + PLAIN, 0.85),
    ("no picture, four windows", FOUR_WINDOWS + "[Visualisation]\nMode=None\n" + PLAIN, 0.45),
]

CURVE = "ZVFX10\r\n" + "".join(f" {top} \r\n" for top in (500, 560, 620, 700, 760, 820, 760, 640, 600, 560, 520))


def spent(process):
    """Nanoseconds on a processor by thread: {id: (name, ns)}."""
    threads = {}
    for task in pathlib.Path(f"/proc/{process}/task").iterdir():
        threads[task.name] = ((task / "comm").read_text().strip(), int((task / "schedstat").read_text().split()[0]))
    return threads


def measure(command, settings=""):
    """Per cent of a core by thread, the most first: [(name, share)]."""
    with tempfile.TemporaryDirectory() as home:
        (pathlib.Path(home) / "zuvio.ini").write_text(settings)
        (pathlib.Path(home) / "zuvio.zfx").write_bytes(CURVE.encode())
        environment = dict(os.environ, VELMO_HOME=home, VELMO_AUDIO="null", QT_SCALE_FACTOR="1")
        process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL)
        try:
            time.sleep(SETTLING)
            before, began = spent(process.pid), time.monotonic()
            time.sleep(SECONDS)
            after, seconds = spent(process.pid), time.monotonic() - began
        finally:
            process.terminate()
            process.wait()
    return sorted(((name, (ns - before.get(thread, ("", 0))[1]) / seconds / 1e7) for thread, (name, ns) in after.items()),
                  key=lambda share: -share[1])


def total(shares):
    return sum(share for _, share in shares)


def main():
    player, plain_picture, music = sys.argv[1:4]
    plain, ours = [], {what: [] for what, _, _ in CASES}
    for _ in range(ROUNDS):
        plain.append(total(measure([plain_picture])))
        for what, settings, _ in CASES:
            ours[what].append(measure([player, music], settings))
    yardstick = statistics.median(plain)
    for what, _, bar in CASES:
        shares = sorted(ours[what], key=total)[ROUNDS // 2]
        ratio, most = total(shares) / yardstick, bar / YARDSTICK
        print(f"| whole program: MP3, {what}, under Xvfb, null output, against a plain Qt picture at 40 frames/s "
              f"| {ratio:.2f} times ({total(shares):.2f} % : {yardstick:.2f} % of a core) "
              f"| {most:.2f} ({bar} : {YARDSTICK} %) | {'yes' if ratio <= most else 'NO'} |", flush=True)
        if "--threads" in sys.argv:
            for name, share in shares:
                print(f"    {name}: {share:.3f} %")


if __name__ == "__main__":
    main()
