# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""A running Quillet: its process, its log, and its operation through a screen reader."""
import datetime
import json
import os
import pathlib
import re
import select
import signal
import subprocess

from pictures import BANNER_HEIGHT, BANNER_WIDTH
from waiting import poll

HERE = pathlib.Path(__file__).resolve().parent
PREFIX = pathlib.Path(os.environ["QUILLET_TEST_PREFIX"])
BUS_NAME = "com.ordwinsoftware.Quillet"
OBJECT_PATH = "/com/ordwinsoftware/Quillet"
PANEL = "Quillet"  # the title of the panel's window


class Line:
    """One line of the log: `time` in seconds since 1970, and the message."""

    def __init__(self, text):
        stamp, self.message = text.split(" ", 1)
        self.time = datetime.datetime.strptime(stamp, "%Y-%m-%dT%H:%M:%S.%fZ").replace(
            tzinfo=datetime.timezone.utc).timestamp()

    def __repr__(self):
        return f"{self.time:.3f} {self.message}"


class Banner:
    """One banner according to the log: `fired` and `shown` in seconds since 1970; `left`, `top` and `close_button` in
    pixels of the screen, for the banner at its final size."""

    def __init__(self, state, message, fired, shown, screen, frame):
        self.state, self.message, self.fired, self.shown = state, message, fired, shown
        # The log has the frame at the start of the animation, which is 95 % of the final size with the same centre. Its
        # points have y up; pictures have y down.
        x, y, width, height = frame
        self.left = round(x + width / 2 - BANNER_WIDTH / 2)
        self.top = round(screen[3] - (y + height / 2) - BANNER_HEIGHT / 2)
        self.close_button = (self.left + BANNER_WIDTH - 41, self.top + 41)


class Program:
    """A running Quillet and its log."""

    def __init__(self, desktop, environment=None, arguments=(), prefix=PREFIX):
        self.desktop = desktop
        self.reader = None
        self.output = desktop.room / "logs" / "quillet"
        self.environment = {**desktop.clock.environment(desktop.environment), "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
                            **(environment or {})}
        self.log = pathlib.Path(self.environment["XDG_STATE_HOME"]) / "Logs/Quillet/quillet-debug.log"
        with self.output.open("ab") as output:
            self.started = desktop.now()
            self.process = subprocess.Popen([prefix / "bin/quillet", *arguments], env=self.environment,
                                            stdin=subprocess.DEVNULL, stdout=output, stderr=output)

    def lines(self):
        try:
            text = self.log.read_text(errors="replace")
        except FileNotFoundError:
            return []
        # Only whole lines that begin with a timestamp: a message may contain line feeds.
        whole = text[:text.rfind("\n") + 1].splitlines()
        return [Line(line) for line in whole if re.match(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z ", line)]

    def find(self, pattern):
        return [line for line in self.lines() if re.search(pattern, line.message)]

    def wait_for(self, pattern, seconds=15.0, count=1):
        """Waits until `count` log lines match the pattern; returns the last of them."""
        def look():
            self.check_alive()
            found = self.find(pattern)
            return found[count - 1] if len(found) >= count else None
        return poll(f"the log line {pattern!r}", look, seconds)

    def check_alive(self):
        if self.process.poll() is not None:
            raise AssertionError(f"Quillet has ended with status {self.process.returncode}")

    def banners(self):
        """The banners shown so far, in order."""
        found, fired = [], None
        for line in self.lines():
            match = re.match(r'notification actually fires state=(\w+) message="(.*)"', line.message)
            if match:
                fired = (match[1], match[2], line.time)
            match = re.match(r"popup shown screenFrame=\((.*)\) windowFrame=\((.*)\)", line.message)
            if match and fired:
                screen, frame = ([float(part) for part in text.split(",")] for text in match.groups())
                found.append(Banner(*fired, line.time, screen, frame))
                fired = None
        return found

    def wait_for_banner(self, count=1, seconds=15.0):
        def look():
            self.check_alive()
            banners = self.banners()
            return banners[count - 1] if len(banners) >= count else None
        return poll(f"banner {count}", look, seconds)

    def wait_for_end(self, seconds=10.0):
        poll("Quillet's end", lambda: self.process.poll() is not None, seconds)
        return self.process.returncode

    def quit(self):
        """Quits it through the bus, as the desktop would; returns its exit status."""
        self.desktop.call(BUS_NAME, OBJECT_PATH, "org.freedesktop.Application.ActivateAction", "quit", "[]", "{}")
        return self.wait_for_end()

    def accessible(self, command, *name):
        """Sends a request to accessible.py and returns its answer; fails when that is null or false."""
        if self.reader is None:
            # Without libfaketime, even when the desktop is in another day: under version 0.9.10 no Python program can
            # sleep.
            environment = {name: value for name, value in self.desktop.environment.items() if name != "LD_PRELOAD"}
            with (self.desktop.room / "logs/accessible").open("ab") as output:
                self.reader = subprocess.Popen(["/usr/bin/python3", str(HERE / "accessible.py"), str(self.process.pid)],
                                               env=environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                               stderr=output, text=True)
        self.reader.stdin.write(json.dumps([command, *name]) + "\n")
        self.reader.stdin.flush()
        answered, _, _ = select.select([self.reader.stdout], [], [], 20)
        answer = json.loads(self.reader.stdout.readline() or "null") if answered else None
        if answer is None or answer is False:
            raise AssertionError(f"no answer to {command} {name}: {answer}")
        return answer

    def accessible_texts(self):
        """Waits until a screen reader finds any text in the program's visible windows; returns all of them."""
        return self.accessible("texts")

    def accessible_roles(self, title):
        """Role and name of the window of that title, and of each element that a screen reader finds in it."""
        return [tuple(found) for found in self.accessible("roles", title)]

    def shows(self, text, *window):
        """Whether a screen reader finds that text right now; `window`: only in the window of that title."""
        return self.accessible("shows", text, *window)["shows"]

    def open_panel(self):
        """Opens the panel with a click on the bell, unless it is open already: a click would close it."""
        if not self.shows("Quit Quillet", PANEL):
            self.desktop.click_bell()
            poll("the panel", lambda: self.shows("Quit Quillet", PANEL))

    def press(self, name, *window):
        """Presses the button, or toggles the switch, of that accessible name; `window`: in the window of that title."""
        self.accessible("press", name, *window)

    def focus(self, name):
        """Gives the keyboard focus to the element of that accessible name."""
        self.accessible("focus", name)

    def choose(self, label, choice):
        """Opens the list of the combo box with that label and clicks the choice."""
        self.accessible("open", label)
        self.desktop.click(*self.accessible("where", choice))
        poll(f"{label} to be {choice}", lambda: self.accessible("value", label) == choice)

    def end(self):
        if self.reader is not None:
            self.reader.terminate()
            self.reader.communicate()
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGCONT)
            self.process.terminate()
            try:
                self.process.wait(5)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()
        # libfaketime leaves these behind when a program is killed.
        for name in (f"faketime_shm_{self.process.pid}", f"sem.faketime_sem_{self.process.pid}"):
            pathlib.Path("/dev/shm", name).unlink(missing_ok=True)


def report_lateness(what, banner, due):
    print(f"{what}: {banner.state:17} due {due:.3f}, fired {banner.fired - due:+.3f} s, "
          f"shown {banner.shown - due:+.3f} s", flush=True)
