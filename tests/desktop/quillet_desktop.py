# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""The base of the whole-program tests: a virtual desktop, calendars with lessons, the real program, its log, pictures
of the screen and a screen reader.

Nothing here waits for a fixed time: conditions are polled, with a deadline."""
import contextlib
import os
import pathlib
import re
import subprocess
import tempfile

from events import calendar, event
from pictures import Picture
from program import PREFIX, Program, report_lateness
from waiting import WallClock, poll

__all__ = ["PREFIX", "SOURCE", "Desktop", "Picture", "calendar", "event", "poll", "report_lateness"]

SOURCE = pathlib.Path(__file__).resolve().parent.parent.parent


class Desktop(contextlib.AbstractContextManager):
    """A virtual desktop; leaving the context ends it with everything that runs in it."""

    size = (1440, 900)

    def __init__(self, calendar_service=True, without=(), movable_clock=False, movable_timers=False):
        """`without`: parts of scripts/virtual-desktop to leave out. With a movable clock, the time of day of programs
        started by start_quillet() follows when the test skips time; with movable timers, so do their timers and time
        limits."""
        self.programs = []
        with tempfile.TemporaryDirectory() as folder:
            room_file = pathlib.Path(folder) / "room"
            command = [str(SOURCE / "scripts/virtual-desktop"), "--prefix", str(PREFIX), "--room-file", str(room_file)]
            if not calendar_service:
                command.append("--without-calendar-service")
            for part in without:
                command += ["--without", part]
            # In its own session: Ctrl+C reaches only the test, which then ends the desktop.
            self.process = subprocess.Popen([*command, "sleep", "infinity"], start_new_session=True,
                                            stdin=subprocess.DEVNULL)

            def up():
                if self.process.poll() is not None:
                    raise AssertionError("the virtual desktop did not come up")
                return room_file.exists()
            poll("the virtual desktop", up, 60)
            self.room = pathlib.Path(room_file.read_text().strip())
        self.environment = dict(line.split("=", 1) for line in (self.room / "environment").read_text().splitlines())
        self.clock = WallClock(self.environment, self.room / "clock", movable_clock or movable_timers, movable_timers)
        self.data = pathlib.Path(self.environment["XDG_DATA_HOME"])
        self.config = pathlib.Path(self.environment["XDG_CONFIG_HOME"])
        self.calendar_folder = self.data / "quillet/calendars"

    def __exit__(self, kind, problem, trace):
        if kind is not None:
            self.report()
        for program in self.programs:
            program.end()
        self.process.terminate()
        self.process.wait(30)

    def report(self):
        """Prints the ends of the logs, to explain a failure."""
        for path in [*self.room.glob("state/Logs/Quillet/*.log"), self.room / "logs/quillet",
                     self.room / "logs/accessible"]:
            if path.is_file():
                print(f"--- {path.name}", flush=True)
                print("\n".join(line[:300] for line in path.read_text(errors="replace").splitlines()[-60:]), flush=True)

    # --- time

    def now(self):
        """The time of day on the desktop, in seconds since 1970."""
        return self.clock.now()

    def wait_until(self, moment):
        poll("that moment", lambda: self.now() > moment, max(moment - self.now(), 0) + 1)

    def skip_to(self, moment):
        """Moves Quillet's time of day forward to the last whole second before that moment."""
        self.clock.skip_to(moment)

    def set_clock_back(self, seconds):
        """Sets Quillet's time of day back."""
        self.clock.set_back(seconds)

    # --- calendars

    def write_system_calendar(self, *events):
        """Replaces the calendar that the calendar service always has. A running service notices, but perhaps only after
        a minute or more."""
        path = self.data / "evolution/calendar/system/calendar.ics"
        path.parent.mkdir(parents=True, exist_ok=True)
        new = path.with_suffix(".new")
        new.write_text(calendar(*events), newline="")
        new.replace(path)

    def write_folder_calendar(self, name, text):
        path = self.calendar_folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, newline="")
        return path

    # --- programs

    def start_quillet(self, environment=None, arguments=(), prefix=PREFIX):
        program = Program(self, environment, arguments, prefix)
        self.programs.append(program)
        return program

    def popen(self, *command, **options):
        return subprocess.Popen(command, env=self.environment, **{"stdin": subprocess.DEVNULL, **options})

    def start_bus(self, *arguments):
        """Starts a bus daemon, and returns when it accepts connections."""
        daemon = self.popen("dbus-daemon", "--nofork", "--nopidfile", "--print-address=1", *arguments,
                            stdout=subprocess.PIPE)
        with daemon.stdout:
            assert daemon.stdout.readline(), "the bus did not come up"
        return daemon

    def run(self, *command, text=True, seconds=20):
        """Runs a command on the desktop and returns its output; fails when its exit status is not 0."""
        done = subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL, capture_output=True,
                              timeout=seconds)
        if done.returncode != 0:
            raise AssertionError(f"{command} failed: {done.stderr.decode(errors='replace')}")
        return done.stdout.decode() if text else done.stdout

    def pid_of(self, part):
        """The process id of a part of the desktop: bus, display, windows, panel, notifications or sound."""
        return int((self.room / "pids" / part).read_text())

    def processes(self, executable):
        """The desktop's processes that run that executable, including those that the bus has started."""
        mark = f"QUILLET_DESKTOP={self.room}".encode()
        found = []
        for entry in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                if mark in (entry / "environ").read_bytes().split(b"\0") and \
                        os.path.basename(os.readlink(entry / "exe")) == executable:
                    found.append(int(entry.name))
            except OSError:
                continue
        return found

    # --- the bus

    def call(self, name, path, method, *arguments):
        return self.run("gdbus", "call", "--session", "--timeout", "5", "--dest", name, "--object-path", path,
                        "--method", method, *arguments)

    def status_items(self):
        """The status items that the panel shows, as bus names with paths."""
        answer = self.call("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                           "org.freedesktop.DBus.Properties.Get", "org.kde.StatusNotifierWatcher",
                           "RegisteredStatusNotifierItems")
        return re.findall(r"'([^']*)'", answer)

    def status_title(self):
        """The title of the only status item."""
        (item,) = self.status_items()
        name, path = re.fullmatch(r"([^/]+)(/.*)?", item).groups()
        answer = self.call(name, path or "/StatusNotifierItem", "org.freedesktop.DBus.Properties.Get",
                           "org.kde.StatusNotifierItem", "Title")
        return re.fullmatch(r"\(<'(.*)'>,\)\s*", answer)[1]

    def status_tool_tip(self):
        """The tool tip of the only status item, as a GVariant text; a screen reader gets it, too."""
        (item,) = self.status_items()
        name, path = re.fullmatch(r"([^/]+)(/.*)?", item).groups()
        return self.call(name, path or "/StatusNotifierItem", "org.freedesktop.DBus.Properties.Get",
                         "org.kde.StatusNotifierItem", "ToolTip")

    def click_bell(self):
        """Activates the bell through the bus, as its host does on a click."""
        (item,) = poll("the bell", self.status_items)
        name, path = re.fullmatch(r"([^/]+)(/.*)?", item).groups()
        self.call(name, path or "/StatusNotifierItem", "org.kde.StatusNotifierItem.Activate", str(self.size[0] - 40),
                  "10")

    def bell(self):
        """The middle of the bell: the leftmost bright spot in the right half of the desktop's panel."""
        def look():
            picture = self.picture()
            for x in range(picture.width // 2, picture.width):
                if any(min(picture.pixel(x, y)) > 200 for y in range(4, 26)):
                    return x + 7, 15
            return None
        return poll("the bell in the desktop's panel", look)

    def click(self, x, y):
        self.run("xdotool", "mousemove", str(x), str(y), "click", "1")

    # --- windows

    def windows(self, title):
        """The visible windows with exactly that title."""
        done = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{re.escape(title)}$"],
                              env=self.environment, stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              check=False)
        return [int(word) for word in done.stdout.split()]

    def place(self, window):
        """The window without its frame: left, top, width and height."""
        words = self.run("xdotool", "getwindowgeometry", "--shell", str(window))
        return [int(re.search(rf"^{name}=(-?\d+)$", words, re.MULTILINE)[1]) for name in ("X", "Y", "WIDTH", "HEIGHT")]

    def frame_of(self, window):
        """The widths of the window manager's frame: left, right, top and bottom."""
        words = self.run("xprop", "-id", str(window), "_NET_FRAME_EXTENTS").partition("=")[2]
        return [int(number) for number in re.findall(r"\d+", words)] or [0, 0, 0, 0]

    def stacking(self, program):
        """The program's windows that the window manager knows, topmost last."""
        windows = re.findall("0x[0-9a-f]+", self.run("xprop", "-root", "_NET_CLIENT_LIST_STACKING"))
        pid = str(program.process.pid)
        return [int(window, 16) for window in windows
                if self.run("xprop", "-id", window, "_NET_WM_PID").split()[-1] == pid]

    def write_settings(self, *lines):
        """Writes the settings file; for a program that does not run yet."""
        path = self.config / "quillet/quillet.ini"
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text("\n".join(["[General]", *lines, ""]))

    def setting(self, key):
        """A setting's text in the file; None if it is not there."""
        try:
            lines = (self.config / "quillet/quillet.ini").read_text(errors="replace").splitlines()
        except FileNotFoundError:
            return None
        return next((line.split("=", 1)[1] for line in lines if line.startswith(key + "=")), None)

    # --- the screen

    def picture(self):
        return Picture(self)

    def wait_until_shown(self, banner, name, seconds=4.0):
        """Waits until the banner is on the screen, and saves that picture under the name."""
        picture = poll(f"the banner {banner.state} in a picture",
                       lambda: (lambda taken: taken if taken.shows(banner) else None)(self.picture()), seconds)
        picture.save(name)
        return picture

    def wait_until_gone(self, banner, seconds=3.0):
        poll(f"the banner {banner.state} to go", lambda: not self.picture().shows(banner), seconds, 0.2)

    def active_window(self):
        answer = self.run("xprop", "-root", "_NET_ACTIVE_WINDOW")
        match = re.search(r"window id # (0x[0-9a-f]+)", answer)
        return int(match[1], 16) if match else None
