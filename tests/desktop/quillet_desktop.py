# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""What the whole-program tests stand on: a virtual desktop, calendars with lessons in them, the real program, its
log, pictures of the screen and what a screen reader sees.

Nothing here waits for a fixed time in the hope that it is enough: everything is polled for, with a deadline."""
import contextlib
import datetime
import json
import os
import pathlib
import re
import signal
import subprocess
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
SOURCE = HERE.parent.parent
PREFIX = pathlib.Path(os.environ["QUILLET_TEST_PREFIX"])
PICTURES = pathlib.Path(os.environ["QUILLET_TEST_PICTURES"])
BUS_NAME = "com.ordwinsoftware.Quillet"
OBJECT_PATH = "/com/ordwinsoftware/Quillet"

GREEN, BLUE, RED = (71, 184, 107), (66, 138, 240), (240, 66, 61)
ACCENT = {"wrapUp": GREEN, "prepare": BLUE, "oneMinuteWarning": BLUE, "joinPlatform": BLUE, "startNow": RED}
BANNER_WIDTH, BANNER_HEIGHT = 1000, 280


def poll(what, condition, seconds=10.0, interval=0.1):
    """Waits until `condition` gives something true, and gives it back; fails after `seconds`."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"waited {seconds:g} s in vain for {what}")
        time.sleep(interval)


def utc(seconds):
    return datetime.datetime.fromtimestamp(seconds, datetime.timezone.utc).strftime("%Y%m%dT%H%M%SZ")


def event(title, start, end, uid=None, extra=()):
    """One event as iCalendar lines; start and end in seconds since 1970."""
    uid = uid or f"{title[:40]}-{int(start)}".replace(" ", "-")
    return "\r\n".join(["BEGIN:VEVENT", f"UID:{uid}", f"DTSTAMP:{utc(start - 86400)}", f"DTSTART:{utc(start)}",
                        f"DTEND:{utc(end)}", f"SUMMARY:{title}", *extra, "END:VEVENT", ""])


def calendar(*events):
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Quillet//Test//EN\r\n" + "".join(events) + "END:VCALENDAR\r\n"


class Line:
    """One line of the log: `time` in seconds since 1970, and the message."""

    def __init__(self, text):
        stamp, self.message = text.split(" ", 1)
        self.time = datetime.datetime.strptime(stamp, "%Y-%m-%dT%H:%M:%S.%fZ").replace(
            tzinfo=datetime.timezone.utc).timestamp()

    def __repr__(self):
        return f"{self.time:.3f} {self.message}"


class Banner:
    """One banner as the log tells of it."""

    def __init__(self, state, message, fired, shown, screen, frame):
        self.state, self.message, self.fired, self.shown = state, message, fired, shown
        # The log tells the frame at the start of the animation, 95 % of the final one with the same centre, in
        # points with y up; pictures have y down.
        x, y, width, height = frame
        self.left = round(x + width / 2 - BANNER_WIDTH / 2)
        self.top = round(screen[3] - (y + height / 2) - BANNER_HEIGHT / 2)
        self.close_button = (self.left + BANNER_WIDTH - 41, self.top + 41)


class Picture:
    """The screen at one moment."""

    def __init__(self, desktop):
        self.width, self.height = desktop.size
        self.bytes = desktop.run("import", "-silent", "-window", "root", "-depth", "8", "rgb:-", text=False)
        assert len(self.bytes) == self.width * self.height * 3, len(self.bytes)

    def pixel(self, x, y):
        at = (y * self.width + x) * 3
        return tuple(self.bytes[at:at + 3])

    def count(self, colour, left, top, width, height, tolerance=2):
        """How many pixels of the rectangle have that colour."""
        left, top = max(left, 0), max(top, 0)
        right, bottom = min(left + width, self.width), min(top + height, self.height)
        near = [range(max(part - tolerance, 0), part + tolerance + 1) for part in colour]
        found = 0
        for y in range(top, bottom):
            row = self.bytes[(y * self.width + left) * 3:(y * self.width + right) * 3]
            if near[0].start not in row and colour[0] not in row:
                continue
            for at in range(0, len(row), 3):
                if row[at] in near[0] and row[at + 1] in near[1] and row[at + 2] in near[2]:
                    found += 1
        return found

    def shows(self, banner):
        """Is the banner in the picture: its accent colour on the left, the dark card around it?"""
        accent = self.count(ACCENT[banner.state], banner.left, banner.top, 250, BANNER_HEIGHT)
        card = max(self.pixel(banner.left + BANNER_WIDTH // 2, banner.top + BANNER_HEIGHT - 14))
        return accent > 3000 and card < 60

    def save(self, name):
        PICTURES.mkdir(parents=True, exist_ok=True)
        path = PICTURES / f"{name}.png"
        subprocess.run(["convert", "-size", f"{self.width}x{self.height}", "-depth", "8", "rgb:-", str(path)],
                       input=self.bytes, check=True)
        return path


class Program:
    """A running Quillet and its log."""

    def __init__(self, desktop, environment=None, arguments=(), prefix=PREFIX):
        self.desktop = desktop
        self.output = desktop.room / "logs" / "quillet"
        self.environment = {**desktop.environment, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", **(environment or {})}
        self.log = pathlib.Path(self.environment["XDG_STATE_HOME"]) / "Logs/Quillet/quillet-debug.log"
        with self.output.open("ab") as output:
            self.started = time.time()
            self.process = subprocess.Popen([prefix / "bin/quillet", *arguments], env=self.environment,
                                            stdin=subprocess.DEVNULL, stdout=output, stderr=output)

    def lines(self):
        try:
            text = self.log.read_text(errors="replace")
        except FileNotFoundError:
            return []
        # Only whole lines that begin with a stamp: a message may itself hold line feeds.
        whole = text[:text.rfind("\n") + 1].splitlines()
        return [Line(line) for line in whole if re.match(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z ", line)]

    def find(self, pattern):
        return [line for line in self.lines() if re.search(pattern, line.message)]

    def wait_for(self, pattern, seconds=15.0, count=1):
        """Waits until the log holds `count` lines that match; gives the last of those."""
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
        """Asks it to quit as the desktop would; gives its exit status."""
        self.desktop.call(BUS_NAME, OBJECT_PATH, "org.freedesktop.Application.ActivateAction", "quit", "[]", "{}")
        return self.wait_for_end()

    def accessible_texts(self):
        """Every text that a screen reader finds in the program's showing windows."""
        return json.loads(self.desktop.run("/usr/bin/python3", str(HERE / "accessible.py"), str(self.process.pid), "texts"))

    def accessible(self, command, *name):
        """Has a screen reader's library do one of the things that accessible.py knows; gives what it printed."""
        return self.desktop.run("/usr/bin/python3", str(HERE / "accessible.py"), str(self.process.pid), command, *name)

    def shows(self, text):
        """Whether a screen reader finds that text right now."""
        return text in json.loads(self.accessible("now"))

    def open_panel(self):
        """Clicks the bell, unless its panel is open: a click would close it."""
        if not self.shows("Quit Quillet"):
            self.desktop.click_bell()
            poll("the panel", lambda: self.shows("Quit Quillet"))

    def press(self, name, *window):
        """Presses the button, or turns the switch, of that accessible name; in the window of that title, if told."""
        self.accessible("press", name, *window)

    def focus(self, name):
        """Gives the keyboard to what has that accessible name."""
        self.accessible("focus", name)

    def choose(self, label, choice):
        """Opens the list of the combo box with that label and clicks the choice."""
        self.accessible("open", label)
        place = self.accessible("where", choice).split()
        self.desktop.run("xdotool", "mousemove", *place, "click", "1")
        poll(f"{label} to be {choice}", lambda: self.accessible("value", label).strip() == choice)

    def end(self):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGCONT)
            self.process.terminate()
            try:
                self.process.wait(5)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()


class Desktop(contextlib.AbstractContextManager):
    """A virtual desktop of its own; taken down, with all that runs in it, at the end."""

    size = (1440, 900)

    def __init__(self, calendar_service=True, without=()):
        self.programs = []
        with tempfile.TemporaryDirectory() as folder:
            room_file = pathlib.Path(folder) / "room"
            command = [str(SOURCE / "scripts/virtual-desktop"), "--prefix", str(PREFIX), "--room-file", str(room_file)]
            if not calendar_service:
                command.append("--without-calendar-service")
            for part in without:
                command += ["--without", part]
            # A process group of its own, so that Ctrl+C reaches the test, which then ends the desktop.
            self.process = subprocess.Popen([*command, "sleep", "infinity"], start_new_session=True,
                                            stdin=subprocess.DEVNULL)

            def up():
                if self.process.poll() is not None:
                    raise AssertionError("the virtual desktop did not come up")
                return room_file.exists()
            poll("the virtual desktop", up, 60)
            self.room = pathlib.Path(room_file.read_text().strip())
        self.environment = dict(line.split("=", 1) for line in (self.room / "environment").read_text().splitlines())
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
        """Prints what helps to understand a failure."""
        for path in [*self.room.glob("state/Logs/Quillet/*.log"), self.room / "logs/quillet"]:
            if path.exists():
                print(f"--- {path.name}", flush=True)
                print("\n".join(line[:300] for line in path.read_text(errors="replace").splitlines()[-60:]), flush=True)

    # --- calendars

    def write_system_calendar(self, *events):
        """The calendar that the calendar service always has; it also picks up later writes."""
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

    def run(self, *command, text=True, seconds=20):
        """Runs a command in the desktop and gives what it printed; fails when it fails."""
        done = subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL, capture_output=True,
                              timeout=seconds)
        if done.returncode != 0:
            raise AssertionError(f"{command} failed: {done.stderr.decode(errors='replace')}")
        return done.stdout.decode() if text else done.stdout

    def pid_of(self, part):
        """The process id of a part of the desktop: bus, display, windows, panel, notifications or sound."""
        return int((self.room / "pids" / part).read_text())

    def processes(self, executable):
        """The desktop's processes that run that executable, also those that the bus has started."""
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

    def click_bell(self):
        """Clicks the bell, as its host would tell of it."""
        (item,) = poll("the bell", self.status_items)
        name, path = re.fullmatch(r"([^/]+)(/.*)?", item).groups()
        self.call(name, path or "/StatusNotifierItem", "org.kde.StatusNotifierItem.Activate", str(self.size[0] - 40), "10")

    def bell(self):
        """The middle of the bell: of the leftmost bright thing in the right half of the desktop's panel."""
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
        """The visible windows of exactly that title."""
        done = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{re.escape(title)}$"],
                              env=self.environment, stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)
        return [int(word) for word in done.stdout.split()]

    def place(self, window):
        """Where the window stands, without its frame: left, top, width and height."""
        words = self.run("xdotool", "getwindowgeometry", "--shell", str(window))
        return [int(re.search(rf"^{name}=(-?\d+)$", words, re.MULTILINE)[1]) for name in ("X", "Y", "WIDTH", "HEIGHT")]

    def frame_of(self, window):
        """How far the window manager's frame reaches beyond the window: left, right, above and below."""
        words = self.run("xprop", "-id", str(window), "_NET_FRAME_EXTENTS").partition("=")[2]
        return [int(number) for number in re.findall(r"\d+", words)] or [0, 0, 0, 0]

    def stacking(self, program):
        """The program's windows that the window manager knows, the foremost last."""
        windows = re.findall("0x[0-9a-f]+", self.run("xprop", "-root", "_NET_CLIENT_LIST_STACKING"))
        pid = str(program.process.pid)
        return [int(window, 16) for window in windows
                if self.run("xprop", "-id", window, "_NET_WM_PID").split()[-1] == pid]

    def write_settings(self, *lines):
        """The settings as the program finds them when it starts."""
        path = self.config / "quillet/quillet.ini"
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text("\n".join(["[General]", *lines, ""]))

    def setting(self, key):
        """A setting as it stands in the file; None where it does not."""
        try:
            lines = (self.config / "quillet/quillet.ini").read_text(errors="replace").splitlines()
        except FileNotFoundError:
            return None
        return next((line.split("=", 1)[1] for line in lines if line.startswith(key + "=")), None)

    # --- the screen

    def picture(self):
        return Picture(self)

    def wait_until_shown(self, banner, name, seconds=4.0):
        """Waits until the banner is in a picture, and keeps that picture."""
        picture = poll(f"the banner {banner.state} in a picture",
                       lambda: (lambda taken: taken if taken.shows(banner) else None)(self.picture()), seconds)
        picture.save(name)
        return picture

    def wait_until_gone(self, banner, seconds=3.0):
        poll(f"the banner {banner.state} to go", lambda: not self.picture().shows(banner), seconds)

    def active_window(self):
        answer = self.run("xprop", "-root", "_NET_ACTIVE_WINDOW")
        match = re.search(r"window id # (0x[0-9a-f]+)", answer)
        return int(match[1], 16) if match else None


def report_lateness(what, banner, due):
    print(f"{what}: {banner.state:17} due {due:.3f}, fired {banner.fired - due:+.3f} s, shown {banner.shown - due:+.3f} s",
          flush=True)


