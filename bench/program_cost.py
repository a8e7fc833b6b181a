#!/usr/bin/env python3
"""What the whole program costs while it plays: program_cost.py PLAYER MUSIC_FILE [--threads]

Plays the file with equalizer and spectrum at 40 frames a second into the null output, on the display of the environment,
and counts the processor time that its threads get, as the kernel tells it in nanoseconds. The server's share is not in it."""
import os
import pathlib
import subprocess
import sys
import tempfile
import time

SETTLING = 4.0  # seconds until start and first decoding ahead are over
SECONDS = 20.0
BAR = 1.0  # per cent of a core

SETTINGS = """[Visualisation]
Mode=Spectrum
SpectrumStyle=Linear
RefreshRateFPS=40
[DSP\\Effects]
EQEnabled=True
"""

CURVE = "ZVFX10\r\n" + "".join(f" {top} \r\n" for top in (500, 560, 620, 700, 760, 820, 760, 640, 600, 560, 520))


def spent(process):
    """Nanoseconds on a processor by thread: {id: (name, ns)}."""
    threads = {}
    for task in pathlib.Path(f"/proc/{process}/task").iterdir():
        threads[task.name] = ((task / "comm").read_text().strip(), int((task / "schedstat").read_text().split()[0]))
    return threads


def measure(player, music):
    with tempfile.TemporaryDirectory() as home:
        (pathlib.Path(home) / "zuvio.ini").write_text(SETTINGS)
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
    shares = measure(sys.argv[1], sys.argv[2])
    total = sum(share for _, share in shares)
    print(f"| whole program: MP3, equalizer and spectrum at 40 frames/s under Xvfb, null output | {total:.2f} % of a core "
          f"| {BAR} | {'yes' if total <= BAR else 'NO'} |")
    if "--threads" in sys.argv:
        for name, share in shares:
            print(f"    {name}: {share:.3f} %")


if __name__ == "__main__":
    main()
