# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""A headless session of a real desktop. Each desktop's module overrides what differs there, and raises NotSeen for what
the desktop lacks."""
import contextlib
import json
import os
import pathlib
import re
import signal
import subprocess
import time

from PIL import Image, ImageChops
from quillet_desktop import Desktop, poll
from report import NotSeen, ToolFailed
from waiting import WallClock

HERE = pathlib.Path(__file__).resolve().parent
HOME = pathlib.Path("/home/teacher")
RUNTIME = pathlib.Path("/run/user/1000")
PASSWORD = "lesson"
SYSTEM_BUS = "unix:path=/run/dbus/system_bus_socket"
BUS = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <listen>unix:path=/run/dbus/system_bus_socket</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/>
  </policy>
</busconfig>
"""


def executables():
    """Process id and executable of each process in this namespace."""
    for entry in pathlib.Path("/proc").glob("[0-9]*"):
        with contextlib.suppress(OSError):  # it may have ended
            yield int(entry.name), pathlib.Path(os.readlink(entry / "exe"))


class Session(Desktop):
    """Coordinates are pixels of the pictures."""

    size = (1280, 800)
    kind = "X11"
    desktop_name = ""
    variables = {}
    sides = ("top", "bottom")  # possible places of its bar
    side = "top"  # the bar's place after the start
    display = ":90"
    nearness = 60  # pixels at most from the bell's centre to the panel's edge
    left_opens = ("panel",)
    double_opens = ("nothing", "panel", "panel, and closed it")
    platforms = ("x11",)  # kinds of windows
    hears_clicks = True  # an X11 window learns of a click on the wallpaper
    notification_stays = 11  # seconds until the desktop's notification has gone
    monitors_note = "both monitors; an X server has one scale for all."

    def __init__(self, monitors=1, scale=1):  # not the parent's, which starts a virtual desktop
        self.monitors, self.scale = monitors, scale
        self.programs, self.parts = [], []
        self.room = HOME / "room"
        for folder in (self.room / "logs", HOME / ".config", HOME / ".local/share", HOME / ".local/state"):
            folder.mkdir(parents=True, exist_ok=True)
        self.environment = {
            "PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8", "HOME": str(HOME), "USER": "teacher", "LOGNAME": "teacher",
            "SHELL": "/bin/bash", "TZ": os.environ["TZ"], "XDG_RUNTIME_DIR": str(RUNTIME), "XDG_SESSION_ID": "c1",
            "XDG_SESSION_TYPE": self.kind.lower(), "XDG_CURRENT_DESKTOP": self.desktop_name,
            "XDG_CONFIG_HOME": str(HOME / ".config"), "XDG_DATA_HOME": str(HOME / ".local/share"),
            "XDG_STATE_HOME": str(HOME / ".local/state"), "XDG_CACHE_HOME": str(HOME / ".cache"),
            "XDG_DATA_DIRS": "/usr/local/share:/usr/share", "LIBGL_ALWAYS_SOFTWARE": "1", "DISPLAY": self.display,
            "DBUS_SYSTEM_BUS_ADDRESS": SYSTEM_BUS, "DBUS_SESSION_BUS_ADDRESS": f"unix:path={RUNTIME}/bus",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", **self.variables}
        self.data, self.config = HOME / ".local/share", HOME / ".config"
        self.calendar_folder = self.data / "quillet/calendars"
        self.reset_clock()

    def __exit__(self, *problem):
        for program in self.programs:
            program.end()
        for part in reversed(self.parts):
            if part.poll() is None:
                part.send_signal(signal.SIGTERM)
        for part in reversed(self.parts):
            try:
                part.wait(3)
            except subprocess.TimeoutExpired:
                part.kill()
                part.wait()

    # --- coming up

    def start(self, name, *command, environment=None):
        """Starts a process of the desktop; its output goes to a log."""
        with (self.room / "logs" / name).open("ab") as output:
            part = subprocess.Popen(command, env={**self.environment, **(environment or {})}, start_new_session=True,
                                    stdin=subprocess.DEVNULL, stdout=output, stderr=output, cwd=HOME)
        self.parts.append(part)
        return part

    def bring_up(self):
        (self.room / "system.conf").write_text(BUS)
        for path in (pathlib.Path("/run/dbus/system_bus_socket"), RUNTIME / "bus"):
            path.unlink(missing_ok=True)
        self.start("system-bus", "dbus-daemon", "--nofork", "--nopidfile", f"--config-file={self.room}/system.conf")
        poll("the system bus", pathlib.Path("/run/dbus/system_bus_socket").exists)
        self.start("logind", "python3", "-m", "dbusmock", "--system", "--template", "logind")
        self.run("gdbus", "wait", "--system", "--timeout", "20", "org.freedesktop.login1")
        self.run("gdbus", "call", "--system", "--dest", "org.freedesktop.login1", "--object-path",
                 "/org/freedesktop/login1", "--method", "org.freedesktop.DBus.Mock.AddSession", "c1", "seat0",
                 "1000", "teacher", "true")
        self.run("gdbus", "call", "--system", "--dest", "org.freedesktop.login1", "--object-path",
                 "/org/freedesktop/login1", "--method", "org.freedesktop.DBus.Mock.AddMethod",
                 "org.freedesktop.login1.Manager", "GetSessionByPID", "u", "o",
                 "ret = dbus.ObjectPath('/org/freedesktop/login1/session/c1')")
        self.start("bus", "dbus-daemon", "--session", "--nofork", "--nopidfile",
                   f"--address=unix:path={RUNTIME}/bus")
        poll("the session bus", (RUNTIME / "bus").exists)
        self.prepare()
        self.start_desktop()
        poll("a host for the bell", self.has_host, 60, 0.3)
        self.after_start()

    def relaunch(self, monitors=1, scale=1):
        """Ends the session and starts another in the same home."""
        self.__exit__(None, None, None)
        self.programs, self.parts, self.monitors, self.scale = [], [], monitors, scale
        self.bring_up()

    def prepare(self):
        """Prepares files and settings before the desktop starts."""

    def start_desktop(self):
        raise NotImplementedError

    def after_start(self):
        """Completes the start once there is a host."""

    def has_host(self):
        try:
            return "true" in self.call("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                                       "org.freedesktop.DBus.Properties.Get", "org.kde.StatusNotifierWatcher",
                                       "IsStatusNotifierHostRegistered")
        except ToolFailed:
            return False

    def run(self, *command, **options):
        """As the parent's, but raises ToolFailed."""
        try:
            return super().run(*command, **options)
        except AssertionError as problem:
            raise ToolFailed(str(problem)) from problem

    def tell_bus(self, *names):
        """Passes these variables to programs that the bus starts."""
        self.run("dbus-update-activation-environment", *(f"{name}={self.environment[name]}" for name in names))

    # --- overridden by desktops

    def bar_to(self, side):
        raise NotSeen("No way is known to move this desktop's bar.")

    def set_dark(self, dark):
        raise NotSeen("No way is known to make this desktop dark.")

    def set_scale(self, scale):
        raise NotSeen("No way is known to scale this desktop.")

    def lock(self):
        raise NotSeen("This desktop's lock does not work in a root without a seat.")

    def unlock(self):
        raise NotSeen("This desktop's lock does not work in a root without a seat.")

    def set_notifications(self, allowed):
        raise NotSeen("This desktop has no switch for one program's notifications.")

    def label(self):
        """The text that the host shows beside the bell; None if unknown."""
        return None

    def resize(self, factor):
        """Gives the first monitor more pixels for a scale of 200 %, if set_scale() does not."""

    def add_monitor(self):
        """Adds a monitor beside or below the first. Returns left, top, width and height."""
        raise NotSeen("No way is known to add a second monitor here.")

    def first_monitor(self):
        """Its width and height."""
        return self.size

    def told_bell(self):
        """The centre of the bell if the desktop reports it."""
        return None

    def menu_is_open(self, seconds=0):
        """Whether the bell's native menu is open, waiting up to this many seconds."""
        found = self.anywhere("Quit Quillet", str(seconds))
        return any(program.lower() != "quillet" for program, *_ in found)

    # --- looking

    def shot(self):
        path = self.room / "shot.png"
        self.run("import", "-silent", "-window", "root", str(path), seconds=30)
        with Image.open(path) as image:
            return image.convert("RGB")

    def still_shot(self, seconds=1.0, limit=10.0):
        """A picture of the screen once nothing in it has changed for `seconds`, or after `limit`: a clock that shows
        seconds never stops. For changes that no signal reports."""
        last, since, deadline = self.shot(), time.monotonic(), time.monotonic() + limit
        while time.monotonic() < min(since + seconds, deadline):
            time.sleep(0.1)
            image = self.shot()
            if ImageChops.difference(image, last).getbbox():
                last, since = image, time.monotonic()
        return last

    def bar_of(self, image, thickness=64):
        """The strip of a picture that contains the bar."""
        top = self.bar_top(image, thickness)
        return image.crop((0, top, image.width, top + thickness))

    def bar_top(self, image, thickness=64):
        return 0 if self.side == "top" else image.height - thickness

    def anywhere(self, *arguments):
        """Searches the accessibility tree; see anywhere.py."""
        done = self.run("/usr/bin/python3", str(HERE / "anywhere.py"), *arguments, seconds=60)
        return json.loads(done)

    def needs_platform(self, platform):
        if platform not in self.platforms:
            raise NotSeen("An X11 session has no Wayland windows.")

    @staticmethod
    def close_button(banner):
        return banner.close_button

    # --- hands

    def move(self, x, y):
        self.run("xdotool", "mousemove", str(round(x)), str(round(y)))
        time.sleep(0.2)  # some hosts ignore a click right after a motion

    def click(self, x, y, button=1, times=1):
        self.move(x, y)
        self.run("xdotool", "click", "--repeat", str(times), "--delay", "120", str(button))

    def key(self, *names):
        self.run("xdotool", "key", *names)

    def rest(self):
        """Moves the pointer to an empty place."""
        self.move(self.size[0] // 2, self.size[1] - 120)

    def settle(self):
        """Cleans up after each step: closes menus and the walk's own windows."""
        self.end_opponents()
        self.key("Escape")
        self.rest()

    # --- programs

    def start_quillet_again(self):
        """Starts Quillet a second time, which hands over to the first."""
        subprocess.run(["/usr/bin/quillet"], env=self.environment, stdin=subprocess.DEVNULL, capture_output=True,
                       timeout=20, check=True)

    def end_opponents(self):
        for opponent in getattr(self, "opponents", []):
            if opponent.poll() is None:
                opponent.terminate()
                opponent.wait(10)
        self.opponents = []

    def reset_clock(self, movable=True):
        self.clock = WallClock({"TZ": self.environment["TZ"]}, self.room / "clock", movable)

    def status_item(self):
        """The bus name and path of Quillet's status item at the host; None if it is not registered."""
        for item in self.status_items():
            name, path = re.fullmatch(r"([^/@]+)@?(/.*)?", item).groups()
            owner = self.call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                              "org.freedesktop.DBus.GetConnectionUnixProcessID", name)
            if self.programs and f"uint32 {self.programs[-1].process.pid}," in owner:
                return name, path or "/StatusNotifierItem"
        return None

    def property_of_bell(self, name):
        bus_name, path = poll("the bell on the bus", self.status_item)
        answer = self.call(bus_name, path, "org.freedesktop.DBus.Properties.Get", "org.kde.StatusNotifierItem", name)
        return re.fullmatch(r"\(<'?(.*?)'?>,\)\s*", answer)[1]

    def quit_quillet(self):
        for program in self.programs:
            if program.process.poll() is None:
                program.quit()
            program.end()
        self.programs.clear()
        for pid in self.pids_of("quillet"):  # started by the session or by the agent
            os.kill(pid, signal.SIGTERM)
        poll("Quillet's end", lambda: not self.pids_of("quillet"))

    def end_agent(self):
        for pid in self.pids_of("quillet-notification-agent"):
            os.kill(pid, signal.SIGTERM)
        poll("the agent's end", lambda: not self.pids_of("quillet-notification-agent"))

    def pids_of(self, executable):
        """The processes that run this executable. The namespace contains only those of this root."""
        return [pid for pid, path in executables() if path.name == executable]

    def pids_below(self, *paths):
        """The processes whose executable is one of these paths or lies below one."""
        return [pid for pid, path in executables() if any(path.is_relative_to(one) for one in paths)]

    def forget(self):
        """Ends Quillet and its agent and removes their files."""
        self.quit_quillet()
        self.end_agent()
        for folder in (self.data / "quillet", self.config / "quillet", self.config / "autostart",
                       HOME / ".local/state"):
            subprocess.run(["rm", "-rf", str(folder)], check=True)


def start_display(server, *arguments):
    """Starts an X server as display :90; it ends with the root's namespaces."""
    with open("/run/display.log", "ab") as log:
        subprocess.Popen([server, Session.display, "-noreset", "-nolisten", "tcp", "-ac", *arguments],
                         stdin=subprocess.DEVNULL, stdout=log, stderr=log)
    poll("the X server", pathlib.Path("/tmp/.X11-unix/X90").exists, 20)


# The dummy driver does not draw correctly after a change of this size.
FRAMEBUFFER = ("--fb", "2048x1536")


def start_xvfb(size):
    start_display("Xvfb", "-screen", "0", f"{size}x24")


class X11Session(Session):
    """A desktop on an X server with two outputs. The second is off at first."""

    second_height = 0

    @staticmethod
    def as_root(monitors):
        """Starts the display while the walk still runs as root."""
        start_display("Xorg", "-config", "/srv/quillet/tests/support/two-monitors.conf", "-logfile", "/run/xorg.log",
                      "-novtswitch", "-sharevts")

    def prepare(self):
        self.outputs = re.findall(r"^(\S+) (?:connected|disconnected)", self.run("xrandr"), re.MULTILINE)
        self.set_mode(self.outputs[0], *self.size)
        if len(self.outputs) > 1:
            self.run("xrandr", *FRAMEBUFFER, "--output", self.outputs[1], "--off")
        self.tell_bus("DISPLAY", "XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE")

    def resize(self, factor):
        """Gives the first monitor more pixels, or its first size for the factor 1."""
        first = type(self).size
        self.size = first if factor == 1 else (2048, 1536) if len(self.outputs) > 1 else (2 * first[0], 2 * first[1])
        self.set_mode(self.outputs[0], *self.size)
        time.sleep(2)  # no signal reports that the desktop has followed

    def set_mode(self, output, width, height, *place):
        mode = f"{width}x{height}r"
        self.run("sh", "-c", f"xrandr --newmode {mode} 100 {width} {width + 8} {width + 16} {width + 32} {height} "
                 f"{height + 2} {height + 4} {height + 8} 2>/dev/null; xrandr --addmode {output} {mode} 2>/dev/null; "
                 "true")
        if len(self.outputs) > 1:
            self.run("xrandr", *FRAMEBUFFER)  # first, since a settings daemon may have made it smaller
        self.run("xrandr", *(FRAMEBUFFER if len(self.outputs) > 1 else ()), "--output", output, "--mode", mode, *place)

    def shot(self):
        return super().shot().crop((0, 0, self.size[0], self.size[1] + self.second_height))

    def add_monitor(self):
        if len(self.outputs) < 2:
            raise NotSeen("This desktop runs on a display with one output here.")
        width, height = self.size
        self.second_height = 1536 - height
        self.set_mode(self.outputs[1], width, self.second_height, "--below", self.outputs[0])
        return 0, height, width, self.second_height
