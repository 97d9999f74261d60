"""A desktop of its own to try applications on: an X server in memory, a window manager, a session bus.

Real X events go in; what comes out is the application's own output, the pixels on the screen, and what assistive
technology is told. Everything that is started here is ended here, by its process.
"""

import contextlib
import json
import os
import subprocess
import sys
import tempfile
import threading
import time
from pathlib import Path

PATIENCE = 15


def in_session():
    """Runs the calling script again on a session bus of its own, and an accessibility bus, unless it is there already."""
    if os.environ.get("VANTIX_TEST_SESSION"):
        return
    with tempfile.TemporaryDirectory() as folder:
        session = {**os.environ, "VANTIX_TEST_SESSION": "1", "XDG_RUNTIME_DIR": folder}
        sys.exit(subprocess.run(["dbus-run-session", "--", sys.executable, *sys.argv], env=session).returncode)


def eventually(question, what):
    """The first true answer; fails when there is none in time."""
    deadline = time.monotonic() + PATIENCE
    while time.monotonic() < deadline:
        answer = question()
        if answer:
            return answer
        time.sleep(0.05)
    raise AssertionError(f"in vain: {what}")


def run(*command):
    return subprocess.run([str(part) for part in command], check=True, capture_output=True).stdout


@contextlib.contextmanager
def process(*command, **options):
    started = subprocess.Popen([str(part) for part in command], **options)
    try:
        yield started
    finally:
        started.terminate()
        started.wait(PATIENCE)


@contextlib.contextmanager
def desktop(width=1000, height=1400):
    reading, writing = os.pipe()
    with process("Xvfb", "-displayfd", writing, "-screen", "0", f"{width}x{height}x24", "-nolisten", "tcp",
                 pass_fds=[writing], stderr=subprocess.DEVNULL):
        os.environ["DISPLAY"] = ":" + os.read(reading, 16).decode().strip()
        with process("openbox", stderr=subprocess.DEVNULL):
            eventually(lambda: b"window id" in run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"), "a window manager")
            yield Screen(width, height)


class Screen:
    def __init__(self, width, height):
        self.width, self.height = width, height

    def picture(self):
        """Three bytes a pixel, line by line."""
        return run("import", "-window", "root", "-depth", "8", "rgb:-")

    def row(self, x, y, length):
        """The pixels from here to the right."""
        at = (y * self.width + x) * 3
        return self.picture()[at:at + length * 3]

    def box(self, color):
        """Where the colour is, as left, top, right, bottom; None where it is not."""
        wanted, picture, stride = bytes.fromhex(color), self.picture(), self.width * 3
        columns, rows = [], []
        for row in range(self.height):
            line = picture[row * stride:(row + 1) * stride]
            found = [x for x in (line.find(wanted), line.rfind(wanted)) if x >= 0]
            if found:
                rows.append(row)
                columns += [found[0] // 3, found[-1] // 3]
        return (min(columns), rows[0], max(columns), rows[-1]) if len(rows) > 4 else None


def move(x, y):
    run("xdotool", "mousemove", round(x), round(y))


def click(place):
    move(*place)
    run("xdotool", "click", "1")


def drag(start, end):
    move(*start)
    run("xdotool", "mousedown", "1")
    for step in range(1, 9):
        move(*(a + (b - a) * step / 8 for a, b in zip(start, end)))
        time.sleep(0.02)
    time.sleep(0.4)  # No flick.
    run("xdotool", "mouseup", "1")


def wheel(place, steps):
    move(*place)
    run("xdotool", "click", "--repeat", abs(steps), "5" if steps > 0 else "4")


def keys(*names):
    run("xdotool", "key", "--delay", "40", *names)


def write(text):
    run("xdotool", "type", "--delay", "40", text)


class Application:
    """A running application that prints what it learns."""

    def __init__(self, command, campaigns, environment=()):
        self.folder = tempfile.TemporaryDirectory()
        self.campaigns = [Path(self.folder.name) / f"campaign-{number}.json" for number in range(len(campaigns))]
        for file, campaign in zip(self.campaigns, campaigns):
            file.write_text(json.dumps(campaign))
        self.lines, self.errors = [], []
        surroundings = {**os.environ, "XDG_RUNTIME_DIR": self.folder.name, "XDG_DATA_HOME": self.folder.name,
                        "TMPDIR": self.folder.name, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "LC_ALL": "C.UTF-8",
                        **dict(environment)}
        self.process = subprocess.Popen([*command, *self.arguments()], text=True, env=surroundings,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        for stream, lines in (self.process.stdout, self.lines), (self.process.stderr, self.errors):
            threading.Thread(target=self._read, args=(stream, lines), daemon=True).start()
        self.main_window = self.window()

    def arguments(self):
        return ["--data", self.folder.name + "/data",
                *(word for file in self.campaigns for word in ("--campaign", file))]

    @staticmethod
    def _read(stream, lines):
        for line in stream:
            lines.append(line.rstrip("\n"))

    def __enter__(self):
        return self

    def __exit__(self, kind, *_):
        if kind:
            print("printed:", *self.lines, "errors:", *self.errors, sep="\n  ")
        if self.process.poll() is None:
            self.process.terminate()
        self.process.wait(PATIENCE)
        self.folder.cleanup()

    def says(self, start):
        return eventually(lambda: next((line for line in self.lines if line.startswith(start)), None), start)

    def has_said(self, start):
        return any(line.startswith(start) for line in self.lines)

    def settle(self):
        """Lets come what may still come."""
        time.sleep(0.4)

    def windows(self):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid)],
                               capture_output=True, text=True).stdout.split()
        return [window for window in found if self.is_managed(window)]

    @staticmethod
    def is_managed(window):
        return b"not found" not in run("xprop", "-id", window, "WM_STATE")

    def window(self):
        return eventually(self.windows, "a window")[0]

    def activate(self, window=None):
        run("xdotool", "windowactivate", "--sync", window or self.main_window)
