# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""sway with waybar, nested in an X display that provides pictures, pointer and keyboard."""
import json
import signal

from plasma import OUTER, Plasma
from quillet_desktop import poll
from session import HOME, RUNTIME

CONFIG = """{outputs}
output * bg #35506b solid_color
default_border none
focus_follows_mouse yes
exec sh {home}/announce
"""
BAR = {"layer": "top", "height": 30, "modules-left": ["sway/workspaces"], "modules-right": ["tray", "clock"],
       "tray": {"icon-size": 18, "spacing": 8}}


class Sway(Plasma):
    desktop_name = "sway"
    monitors_note = "both monitors, the second at 200 %."
    side = "top"
    variables = {"XDG_SESSION_DESKTOP": "sway", "DESKTOP_SESSION": "sway"}
    nearness = 2000  # sway centres the panel on the screen

    def prepare(self):
        (HOME / ".config/waybar").mkdir(parents=True, exist_ok=True)
        self.write_bar()

    def write_bar(self):
        (HOME / ".config/waybar/config").write_text(json.dumps({**BAR, "position": self.side}))

    def start_desktop(self):
        for path in RUNTIME.glob("wayland-*"):
            path.unlink()
        for name in ("WAYLAND_DISPLAY", "XAUTHORITY", "SWAYSOCK"):
            self.environment.pop(name, None)
        self.environment["DISPLAY"] = OUTER
        told = HOME / "announced"
        told.unlink(missing_ok=True)
        (HOME / "announce").write_text(f"env | grep -E '^(WAYLAND_DISPLAY|DISPLAY|SWAYSOCK)=' >{told}.new\n"
                                       f"mv {told}.new {told}\n")
        outputs = (f"output X11-{number + 1} resolution {width}x{height} scale {width // self.size[0]} "
                   f"position {number * self.size[0]} 0" for number, (width, height) in enumerate(self.pixels()))
        (HOME / "sway").write_text(CONFIG.format(outputs="\n".join(outputs), home=HOME))
        self.start("compositor", "sway", "--config", str(HOME / "sway"), environment={
            "WLR_BACKENDS": "x11", "WLR_RENDERER": "pixman", "WLR_X11_OUTPUTS": str(self.monitors),
            "WLR_LIBINPUT_NO_DEVICES": "1"})
        poll("the compositor", told.exists, 30)
        self.environment.update(line.split("=", 1) for line in told.read_text().splitlines())
        self.tell_bus("DISPLAY", "WAYLAND_DISPLAY", "SWAYSOCK", "XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE")
        self.start("notifications", "mako")
        self.bar = self.start("bar", "waybar")

    def pixels(self):
        """Width and height of each monitor in pixels."""
        width, height = self.size
        return [(width * factor, height * factor) for factor in ([self.scale] if self.monitors == 1 else [1, 2])]

    def scale_one(self):
        """The configuration has scaled it."""

    def after_start(self):
        self.still_shot(2, 20)

    def bar_to(self, side):
        self.side = side
        self.bar.terminate()
        self.bar.wait(10)
        self.write_bar()
        self.bar = self.start("bar", "waybar")
        poll("the bar", self.has_host, 20)
        self.still_shot()

    def set_dark(self, dark):
        self.run("gsettings", "set", "org.gnome.desktop.interface", "color-scheme",
                 "prefer-dark" if dark else "prefer-light")

    def lock(self):
        self.locker = self.start("locker", "swaylock", "--color", "202020")

    def unlock(self):
        self.locker.send_signal(signal.SIGUSR1)  # unlocks it
        self.locker.wait(10)

    def set_notifications(self, allowed):
        rules = "" if allowed else "[app-name=Quillet]\ninvisible=1\n"
        (HOME / ".config/mako").mkdir(parents=True, exist_ok=True)
        (HOME / ".config/mako/config").write_text(rules)
        self.run("makoctl", "reload")
