"""A private desktop for tests of the built player: a virtual display with a window manager, a directory for the player's files,
and processes that are ended when the test is over."""
import array
import os
import pathlib
import shutil
import signal
import struct
import subprocess
import tempfile
import time
import wave

PATIENCE = 60  # seconds until a condition that does not come is a failure


def wait_until(condition, what, patience=PATIENCE):
    """The first true value of `condition`. `what` may be a text or make one."""
    end = time.monotonic() + patience
    while time.monotonic() < end:
        value = condition()
        if value:
            return value
        time.sleep(0.02)  # between two looks
    raise AssertionError(f"waited in vain: {what() if callable(what) else what}")


def write_levels(path, level, seconds, rate=44100):
    """A 16-bit stereo WAV file of one constant value."""
    with wave.open(str(path), "wb") as file:
        file.setnchannels(2)
        file.setsampwidth(2)
        file.setframerate(rate)
        file.writeframes(struct.pack("<hh", level, level) * int(seconds * rate))


def left_samples(path):
    """The left side of a 16-bit stereo WAV file that may still be growing."""
    data = pathlib.Path(path).read_bytes()[44:] if pathlib.Path(path).exists() else b""
    return array.array("h", data[:len(data) // 4 * 4])[::2]


def values_of(path):
    return set(left_samples(path))


def levels_of(path):
    """The runs of equal values in such a file: [[value, frames], ...]."""
    runs = []
    for value in left_samples(path):
        if runs and runs[-1][0] == value:
            runs[-1][1] += 1
        else:
            runs.append([value, 1])
    return runs


class Desktop:
    def __init__(self, program_directory, window_manager=True):
        self.program_directory = pathlib.Path(program_directory)
        self.directory = pathlib.Path(tempfile.mkdtemp(prefix="velmo-e2e-"))
        self.home = self.directory / "home"
        self.home.mkdir()
        self.processes = []
        try:
            self.start_desktop(window_manager)
        except BaseException:
            self.close()
            raise

    def start_desktop(self, window_manager):
        reading, writing = os.pipe()
        # Without -noreset the server begins anew whenever its last client leaves, and takes the window manager along.
        self.start(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x1024x24", "-nolisten", "tcp", "-noreset"],
                   pass_fds=[writing], environment=dict(os.environ))
        os.close(writing)
        with os.fdopen(reading) as answer:
            self.display = ":" + answer.readline().strip()
        if window_manager:
            self.start(["openbox", "--sm-disable"])
            wait_until(lambda: b"_NET_SUPPORTING_WM_CHECK(WINDOW)" in self.output("xprop", "-root"), "window manager")

    def environment(self, **more):
        environment = {name: value for name, value in os.environ.items()
                       if not name.startswith(("VELMO_", "QT_", "WAYLAND_", "PULSE_"))}
        environment.update(DISPLAY=self.display, HOME=str(self.directory), XDG_RUNTIME_DIR=str(self.directory),
                           VELMO_HOME=str(self.home), VELMO_AUDIO="null", QT_SCALE_FACTOR="1")
        environment.pop("DBUS_SESSION_BUS_ADDRESS", None)
        environment.update(more)
        return {name: value for name, value in environment.items() if value is not None}

    def start(self, command, environment=None, **options):
        process = subprocess.Popen(command, env=environment or self.environment(), stdin=subprocess.DEVNULL,
                                   stdout=options.pop("stdout", subprocess.DEVNULL),
                                   stderr=options.pop("stderr", subprocess.DEVNULL), **options)
        self.processes.append(process)
        return process

    def player(self, *arguments, program_directory=None, stderr=subprocess.DEVNULL, **variables):
        program = pathlib.Path(program_directory or self.program_directory) / "zuvio"
        return self.start([str(program), *map(str, arguments)], environment=self.environment(**variables),
                          stderr=stderr)

    def output(self, *command):
        return subprocess.run(command, env=self.environment(), capture_output=True).stdout

    def windows(self, title):
        """Ids of the windows that are shown under exactly that title."""
        found = self.output("xdotool", "search", "--onlyvisible", "--name", f"^{title}$").split()
        return [window.decode() for window in found]

    def wait_for_window(self, title):
        return wait_until(lambda: self.windows(title), f"window '{title}'")[0]

    def main_windows(self):
        """Ids of the main windows that are shown. Their titles run, so they are told by their size."""
        found = self.output("xdotool", "search", "--onlyvisible", "--class", "velmo-player").decode().split()
        return [window for window in found
                if b"WIDTH=265\nHEIGHT=177\n" in self.output("xdotool", "getwindowgeometry", "--shell", window)]

    def wait_for_main_window(self):
        return wait_until(self.main_windows, "main window")[0]

    def pixels(self, window, left, top, width, height):
        """The colours of a part of a window, as (red, green, blue)."""
        raw = subprocess.run(
            ["import", "-silent", "-window", window, "-crop", f"{width}x{height}+{left}+{top}", "-depth", "8", "rgb:-"],
            env=self.environment(), capture_output=True, check=True).stdout
        return list(struct.iter_unpack("BBB", raw))

    def close(self):
        for process in reversed(self.processes):
            if process.poll() is None:
                process.send_signal(signal.SIGTERM)
                try:
                    process.wait(10)
                except subprocess.TimeoutExpired:
                    process.kill()
                    process.wait()
        shutil.rmtree(self.directory, ignore_errors=True)
