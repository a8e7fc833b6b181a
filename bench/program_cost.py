#!/usr/bin/env python3
"""What the whole program costs while it plays: program_cost.py PLAYER MUSIC_FILE [--threads]

Plays the file into the null output, on the display of the environment, and counts the processor time that its threads get, as
the kernel tells it in nanoseconds. The server's share is not in it."""
import os
import pathlib
import subprocess
import sys
import tempfile
import time

SETTLING = 4.0  # seconds until start and first decoding ahead are over
SECONDS = 20.0
FOUR_WINDOWS = "[RTM]\nShowPL=True\nShowFX=True\nShowPLMGR=True\n"
SPECTRUM = "[Visualisation]\nMode=Spectrum\nSpectrumStyle=Linear\nRefreshRateFPS=40\n"
EQUALIZER = "[DSP\\Effects]\nEQEnabled=True\n"
PLAIN = "[DSP\\Effects]\nEQEnabled=False\n"

# What is measured, the settings that make it so, and at most so many per cent of a core.
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


def measure(player, music, settings):
    with tempfile.TemporaryDirectory() as home:
        (pathlib.Path(home) / "zuvio.ini").write_text(settings)
        (pathlib.Path(home) / "zuvio.zfx").write_bytes(CURVE.encode())
        environment = dict(os.environ, VELMO_HOME=home, VELMO_AUDIO="null", QT_SCALE_FACTOR="1")
        process = subprocess.Popen([player, music], env=environment, stdin=subprocess.DEVNULL)
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


def main():
    for what, settings, bar in CASES:
        shares = measure(sys.argv[1], sys.argv[2], settings)
        total = sum(share for _, share in shares)
        print(f"| whole program: MP3, {what}, under Xvfb, null output | {total:.2f} % of a core "
              f"| {bar} | {'yes' if total <= bar else 'NO'} |", flush=True)
        if "--threads" in sys.argv:
            for name, share in shares:
                print(f"    {name}: {share:.3f} %")


if __name__ == "__main__":
    main()
