# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Plasma on Wayland, nested in an X display that provides pictures, pointer and keyboard."""
import os
import pathlib
import re
import shutil
import subprocess
import time

from PIL import Image
from quillet_desktop import poll
from report import ToolFailed
from session import HOME, PASSWORD, RUNTIME, Session, start_xvfb

OUTER = ":90"


class Plasma(Session):
    kind = "Wayland"
    desktop_name = "KDE"
    side = "bottom"
    platforms = ("x11", "wayland")
    display = OUTER
    version = "6" if os.path.exists("/usr/bin/kded6") else "5"
    variables = {"XDG_SESSION_DESKTOP": "KDE", "DESKTOP_SESSION": "plasma", "KDE_FULL_SESSION": "true",
                 "KDE_SESSION_VERSION": version, "XDG_MENU_PREFIX": "plasma-", "QT_QUICK_BACKEND": "software",
                 "XDG_CONFIG_DIRS": "/etc/xdg"}
    monitors_note = "both monitors, the first at 200 %."

    @staticmethod
    def as_root(monitors):
        start_xvfb("5120x1600")

    def prepare(self):
        # A copy, without the file capability, which a container refuses.
        shutil.copyfile("/usr/bin/kwin_wayland", HOME / "kwin_wayland")
        (HOME / "kwin_wayland").chmod(0o755)

    def start_desktop(self):
        before = {pathlib.Path("/tmp/.X11-unix/X" + OUTER[1:])}
        for path in set(pathlib.Path("/tmp/.X11-unix").iterdir()) - before:
            path.unlink()  # left by an earlier compositor
        # The file keeps the scale of an earlier start.
        for path in [*RUNTIME.glob("wayland-*"), *HOME.glob(".config/kwinoutputconfig.json")]:
            path.unlink()
        width, height = self.size if self.monitors == 1 else self.pixels()[0]  # in points
        for name in ("WAYLAND_DISPLAY", "XAUTHORITY"):
            self.environment.pop(name, None)
        self.environment["DISPLAY"] = OUTER
        self.start("compositor", str(HOME / "kwin_wayland"), "--x11-display", OUTER, "--xwayland", "--width",
                   str(width), "--height", str(height), "--scale", str(self.scale),
                   "--output-count", str(self.monitors),
                   "--socket", "wayland-0",
                   environment={"XDG_SESSION_TYPE": "x11", "KWIN_COMPOSE": "Q"})
        poll("the compositor", (RUNTIME / "wayland-0").exists, 30)
        inner = poll("the X server in it", lambda: [path for path in pathlib.Path("/tmp/.X11-unix").iterdir()
                                                    if path not in before], 20)
        self.environment.update(WAYLAND_DISPLAY="wayland-0", DISPLAY=":" + sorted(inner)[0].name[1:])
        keys = sorted(RUNTIME.glob("xauth_*"), key=os.path.getmtime)  # KWin 5 has no key
        self.environment.update({"XAUTHORITY": str(keys[-1])} if keys else {})
        self.tell_bus(*({"XAUTHORITY"} & set(self.environment)), "DISPLAY", "WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP",
                      "XDG_SESSION_TYPE", "KDE_FULL_SESSION", "KDE_SESSION_VERSION")
        self.start("activities", "/usr/lib/x86_64-linux-gnu/libexec/kactivitymanagerd")
        self.start("kded", f"kded{self.version}")
        self.start("shell", "plasmashell")

    def after_start(self):
        self.still_shot(2, 20)

    # --- input and pictures, through the outer display

    def outside(self, *command):
        environment = {**self.environment, "DISPLAY": OUTER}
        environment.pop("XAUTHORITY", None)
        return subprocess.run(command, env=environment, stdin=subprocess.DEVNULL, capture_output=True, timeout=30,
                              check=True).stdout.decode()

    def pixels(self):
        """Width and height of each monitor in pixels. KWin gives all its windows one size."""
        width, height = self.size
        factors = [self.scale] if self.monitors == 1 else [2] * self.monitors
        return [(width * factor, height * factor) for factor in factors]

    def first_monitor(self):
        return self.pixels()[0]

    def lay_out_monitors(self):
        """Places the windows of the monitors side by side; without a window manager they cover each other."""
        children = self.outside("xwininfo", "-root", "-children")
        windows = sorted(re.findall(r"^ +(0x[0-9a-f]+) .* (\d+x\d+)\+", children, re.MULTILINE))
        left = 0
        for width, height in self.pixels():
            window = next((one for one in windows if one[1] == f"{width}x{height}"), None)
            if not window:
                raise ToolFailed(f"There is no window of {width}x{height}:\n{children}")
            windows.remove(window)
            self.outside("xdotool", "windowmove", window[0], str(left), "0")
            left += width

    def move(self, x, y):
        self.outside("xdotool", "mousemove", str(round(x)), str(round(y)))
        time.sleep(0.3)  # the bar ignores a click right after a motion

    def click(self, x, y, button=1, times=1):
        self.move(x, y)
        self.outside("xdotool", "click", "--repeat", str(times), "--delay", "120", str(button))

    def key(self, *names):
        self.outside("xdotool", "key", *names)

    def shot(self):
        path = self.room / "shot.png"
        self.outside("import", "-silent", "-window", "root", str(path))
        with Image.open(path) as image:
            widths, heights = zip(*self.pixels())
            return image.convert("RGB").crop((0, 0, sum(widths), max(heights)))

    # --- specific to Plasma

    def script(self, text):
        return self.call("org.kde.plasmashell", "/PlasmaShell", "org.kde.PlasmaShell.evaluateScript", text)

    def bar_to(self, side):
        self.script(f"panels().forEach(panel => panel.location = '{side}')")
        self.side = side
        self.still_shot()

    def set_dark(self, dark):
        self.run("plasma-apply-colorscheme", "BreezeDark" if dark else "BreezeLight", seconds=60)

    def lock(self):
        self.call("org.freedesktop.ScreenSaver", "/ScreenSaver", "org.freedesktop.ScreenSaver.Lock")

    def unlock(self):
        self.key("Shift_L")  # shows where to type
        self.still_shot()
        self.outside("xdotool", "type", "--delay", "100", PASSWORD)
        self.key("Return")

    def set_notifications(self, allowed):
        self.run(f"kwriteconfig{self.version}", "--file", "plasmanotifyrc", "--group", "Applications",
                 "--group", "com.ordwinsoftware.Quillet", "--key", "ShowPopups", "--type", "bool",
                 "true" if allowed else "false")
        # As the tool of Plasma 6 tells it with an option that the one of Plasma 5 lacks.
        self.run("gdbus", "emit", "--session", "--object-path", "/plasmanotifyrc", "--signal",
                 "org.kde.kconfig.notify.ConfigChanged",
                 "{'Applications\x1dcom.ordwinsoftware.Quillet': [b'ShowPopups']}")

    def set_scale(self, scale):
        self.relaunch(scale=scale)
        if self.version == "6":  # which makes the window larger, but not what is in it
            self.run("kscreen-doctor", f"output.1.scale.{scale}")
            self.still_shot()

    def add_monitor(self):
        self.relaunch(monitors=2)
        self.lay_out_monitors()
        self.scale_one()
        (left, _), size = self.pixels()
        return left, 0, *size

    def scale_one(self):
        # The first, for on another one that is scaled, a nested KWin misjudges where the pointer is.
        self.run("kscreen-doctor", "output.1.scale.2", f"output.2.position.{self.size[0]},0")
        self.still_shot()
