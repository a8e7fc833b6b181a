"""A private desktop for tests of the built player: a virtual display with a window manager, a directory for the player's files,
and processes that are ended when the test is over. Each script is called as SCRIPT PROGRAM_DIRECTORY DEMO_DIRECTORY
[unittest arguments]."""
import array
import os
import pathlib
import re
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import time
import unittest
import wave

PROGRAM_DIRECTORY = pathlib.Path(sys.argv.pop(1))
DEMO_DIRECTORY = pathlib.Path(sys.argv.pop(1))
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


def write_sound(path, second_of_levels, seconds):
    """A 16-bit stereo WAV file that repeats these levels, a second of them."""
    frames = b"".join(struct.pack("<hh", level, level) for level in second_of_levels)
    with wave.open(str(path), "wb") as file:
        file.setnchannels(2)
        file.setsampwidth(2)
        file.setframerate(len(second_of_levels))
        file.writeframes((frames * (int(seconds) + 1))[:4 * int(seconds * len(second_of_levels))])


def write_levels(path, level, seconds):
    """A file of one constant value."""
    write_sound(path, [level] * 44100, seconds)


class Desktop:
    def __init__(self, window_manager=True):
        self.directory = pathlib.Path(tempfile.mkdtemp(prefix="velmo-e2e-"))
        self.home = self.directory / "home"
        self.home.mkdir()
        self.processes = []
        self.display = None
        try:
            self.start_desktop(window_manager)
        except BaseException:
            self.close()
            raise

    def start_desktop(self, window_manager):
        # Without -noreset the server begins anew whenever its last client leaves, and takes the window manager along.
        self.display = ":" + self.start_and_read(
            ["Xvfb", "-displayfd", "{}", "-screen", "0", "1280x1024x24", "-nolisten", "tcp", "-noreset"], dict(os.environ))
        if window_manager:
            self.start(["openbox", "--sm-disable"])
            wait_until(self.is_managed, "window manager")

    def is_managed(self):
        """Whether the window manager does what it's asked. One that has only announced itself yet leaves the windows of some
        programs unshown for good."""
        self.output("xdotool", "set_num_desktops", 2)
        return self.xdo("get_num_desktops") == "2"

    def environment(self, **more):
        environment = {name: value for name, value in os.environ.items()
                       if not name.startswith(("VELMO_", "QT_", "WAYLAND_", "PULSE_", "DBUS_SESSION"))}
        environment.update(DISPLAY=self.display, HOME=str(self.directory), XDG_RUNTIME_DIR=str(self.directory),
                           VELMO_HOME=str(self.home), VELMO_AUDIO="null", QT_SCALE_FACTOR="1")
        environment.update(more)
        return {name: value for name, value in environment.items() if value is not None}

    def start(self, command, environment=None, stderr=subprocess.DEVNULL, **options):
        process = subprocess.Popen(command, env=environment or self.environment(), stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=stderr, **options)
        self.processes.append(process)
        return process

    def start_and_read(self, command, environment=None):
        """The line that a process writes to the file whose number stands in place of the braces."""
        reading, writing = os.pipe()
        self.start([word.format(writing) for word in command], environment, pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading) as answer:
            return answer.readline().strip()

    def player(self, *arguments, program_directory=PROGRAM_DIRECTORY, **variables):
        """What it says goes into `log`."""
        with self.log.open("ab") as stderr:
            return self.start([str(program_directory / "zuvio"), *map(str, arguments)], self.environment(**variables), stderr)

    @property
    def log(self):
        return self.directory / "log"

    def output(self, *command):
        return subprocess.run([*map(str, command)], env=self.environment(), capture_output=True).stdout.decode()

    def xdo(self, *arguments):
        return self.output("xdotool", *arguments).strip()

    def windows(self, title):
        """Ids of the windows that are shown under exactly that title."""
        return self.xdo("search", "--onlyvisible", "--name", f"^{title}$").split()

    def player_windows(self):
        """Ids of all windows of players that are shown, menus and dialogs too."""
        return self.xdo("search", "--onlyvisible", "--class", "velmo-player").split()

    def windows_of_size(self, size):
        return [window for window in self.player_windows() if self.place(window)[2:] == size]

    def main_windows(self):
        """Ids of the main windows that are shown. Their titles run, so they are told by their size."""
        return self.windows_of_size((265, 177))

    def wait_for_main_window(self):
        return wait_until(self.main_windows, "main window")[0]

    def wait_for_window(self, title):
        return wait_until(lambda: self.windows(title), f"window '{title}'")[0]

    def place(self, window):
        """Left, top, width and height, as the server says; empty if there is no such window."""
        found = self.output("xwininfo", "-id", window)
        values = [re.search(rf"{what}: +(-?\d+)", found) for what in
                  ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]
        return tuple(int(value[1]) for value in values) if all(values) else ()

    def is_minimised(self, window):
        return "Iconic" in self.output("xprop", "-id", window, "WM_STATE")

    def point(self, window, x, y, *then):
        """Not with --sync, which waits for long where the pointer is there already."""
        self.xdo("mousemove", "--window", window, x, y, *then)

    def click(self, window, x, y, button=1, times=1):
        """More than once with a pause: window managers lose a press that comes too soon behind another one."""
        self.point(window, x, y, "click", "--repeat", times, "--delay", 50, button)

    def press_key(self, window, *names):
        """Keys of the server's own, to a window that has the focus first."""
        self.xdo("windowactivate", window)
        wait_until(lambda: self.xdo("getwindowfocus") == window, "focus")
        self.xdo("key", *names)

    def pixels(self, window, left, top, width, height):
        """The colours of a part of a window, as (red, green, blue)."""
        raw = subprocess.run(
            ["import", "-silent", "-window", window, "-crop", f"{width}x{height}+{left}+{top}", "-depth", "8", "rgb:-"],
            env=self.environment(), capture_output=True, check=True).stdout
        return list(struct.iter_unpack("BBB", raw))

    def tell(self):
        """For whoever reads why a test has failed."""
        ended = [f"{pathlib.Path(process.args[0]).name}: {process.returncode}" for process in self.processes
                 if process.poll() is not None]
        titles = [self.xdo("getwindowname", window) for window in self.player_windows()]
        said = self.log.read_text(errors="replace")[-3000:] if self.log.exists() else ""
        print("ended:", ended, "shown:", titles, said, file=sys.stderr)

    def close(self):
        self.tell()
        for process in reversed(self.processes):
            if process.poll() is None:
                process.send_signal(signal.SIGTERM)
                try:
                    process.wait(10)
                except subprocess.TimeoutExpired:
                    process.kill()
                    process.wait()
        shutil.rmtree(self.directory, ignore_errors=True)


class DesktopTest(unittest.TestCase):
    def setUp(self):
        self.start_desktop()

    def start_desktop(self, window_manager=True):
        self.desktop = Desktop(window_manager)
        self.addCleanup(self.desktop.close)
        self.rendered = self.desktop.directory / "rendered.wav"

    @property
    def settings(self):
        return self.desktop.home / "zuvio.ini"

    def saved_list(self):
        return (self.desktop.home / "list.zvl").read_text()

    def make(self, name, level, seconds=0.2):
        path = self.desktop.directory / name
        path.parent.mkdir(exist_ok=True)
        write_levels(path, level, seconds)
        return path

    def player(self, *arguments, **variables):
        return self.desktop.player(*arguments, **variables)

    def recording_player(self, *arguments, **options):
        return self.player(*arguments, VELMO_AUDIO=f"wav:{self.rendered}", **options)

    def samples(self):
        """The left side of what has been rendered so far."""
        data = self.rendered.read_bytes()[44:] if self.rendered.exists() else b""
        return array.array("h", data[:len(data) // 4 * 4])[::2]

    def heard(self):
        return set(self.samples()) - {0}

    def hears(self, level):
        """Waits until that is the level of the last sound."""
        last = lambda: next((value for value in reversed(self.samples()) if value != 0), 0)
        wait_until(lambda: last() == level, lambda: f"level {level}; it is {last()}")

    def ends(self, player, status=0):
        """A leak that is found in code of others alone is not ours: threads of the toolkit at times outlive its end."""
        found = player.wait(PATIENCE)
        said = self.desktop.log.read_text(errors="replace")
        if "LeakSanitizer: detected memory leaks" not in said or "velmo::" in said:
            self.assertEqual(found, status)

    def terminate(self, player):
        player.terminate()
        self.ends(player)
