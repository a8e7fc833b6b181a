#!/usr/bin/env python3
"""What the whole program costs while it does next to nothing: idle_cost.py PLAYER EMPTY_WINDOW MUSIC_FILE [--threads]

Counts how often its threads wake, as the kernel counts their waits, on the display of the environment and with the null output:
stopped with four windows shown, and playing without a picture. Compares its memory, with what is shared shared out (PSS), with
that of an empty window of the toolkit that stands beside it."""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import time

SETTLING = 6.0  # seconds until start and the first rests are over
SECONDS = 10.0
IDLE_BAR = 12  # wake-ups a second
PLAYING_BAR = 50
MEMORY_BAR = 15  # MB above the empty window

FOUR_WINDOWS = "[RTM]\nShowPL=True\nShowFX=True\nShowPLMGR=True\n"
NO_PICTURE = FOUR_WINDOWS + "[Visualisation]\nMode=None\n"


def waits(process):
    """How often each thread has gone to sleep by itself: {id: (name, times)}."""
    threads = {}
    for task in pathlib.Path(f"/proc/{process}/task").iterdir():
        times = re.search(r"^voluntary_ctxt_switches:\s*(\d+)", (task / "status").read_text(), re.MULTILINE)[1]
        threads[task.name] = ((task / "comm").read_text().strip(), int(times))
    return threads


def memory(process):
    """MB that the process would give back."""
    rollup = pathlib.Path(f"/proc/{process}/smaps_rollup").read_text()
    return int(re.search(r"^Pss:\s*(\d+) kB", rollup, re.MULTILINE)[1]) / 1024


class Running:
    """A program with a home of its own, ended at the end of the block."""

    def __init__(self, command, settings=""):
        self.command, self.settings = command, settings

    def __enter__(self):
        self.home = tempfile.TemporaryDirectory()
        (pathlib.Path(self.home.name) / "zuvio.ini").write_text(self.settings)
        environment = dict(os.environ, VELMO_HOME=self.home.name, VELMO_AUDIO="null", QT_SCALE_FACTOR="1")
        self.process = subprocess.Popen(self.command, env=environment, stdin=subprocess.DEVNULL)
        return self.process.pid

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()
        self.home.cleanup()


def wake_ups(process):
    """By thread, in a second: [(name, times)]."""
    before, began = waits(process), time.monotonic()
    time.sleep(SECONDS)
    after, seconds = waits(process), time.monotonic() - began
    return [(name, (times - before.get(thread, ("", 0))[1]) / seconds) for thread, (name, times) in after.items()]


def tell(what, value, unit, bar, details=()):
    print(f"| whole program: {what} | {value:.1f} {unit} | {bar} | {'yes' if value <= bar else 'NO'} |")
    if "--threads" in sys.argv:
        for name, times in details:
            print(f"    {name}: {times:.1f}")


def main():
    player, empty, music = sys.argv[1:4]
    with Running([empty]) as window, Running([player], FOUR_WINDOWS) as process:
        time.sleep(SETTLING)
        threads = wake_ups(process)
        tell("wake-ups, stopped and shown", sum(times for _, times in threads), "a second", IDLE_BAR, threads)
        tell("memory (PSS), stopped, four windows, above an empty window", memory(process) - memory(window), "MB", MEMORY_BAR)
    with Running([player, music], NO_PICTURE) as process:
        time.sleep(SETTLING)
        threads = wake_ups(process)
        tell("wake-ups, playing an MP3 without a picture", sum(times for _, times in threads), "a second", PLAYING_BAR, threads)


if __name__ == "__main__":
    main()
