# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Xfce, started by its session manager."""
import shutil

import xscreensaver
from session import HOME, X11Session

# The default layout: two panels; the upper one contains the status area.
FIRST_PANELS = "/etc/xdg/xfce4/panel/default.xml"
HAS_SAVER = shutil.which("xfce4-screensaver-command") is not None
# There is no graphics card to synchronise with.
WINDOWS = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfwm4" version="1.0">
  <property name="general" type="empty"><property name="vblank_mode" type="string" value="off"/></property>
</channel>
"""


class Xfce(X11Session):
    desktop_name = "XFCE"
    variables = {"XDG_SESSION_DESKTOP": "xfce", "DESKTOP_SESSION": "xfce", "XDG_CONFIG_DIRS": "/etc/xdg",
                 "XDG_MENU_PREFIX": "xfce-"}

    def prepare(self):
        super().prepare()
        folder = HOME / ".config/xfce4/xfconf/xfce-perchannel-xml"
        folder.mkdir(parents=True, exist_ok=True)
        with open(FIRST_PANELS, encoding="utf-8") as first:
            (folder / "xfce4-panel.xml").write_text(first.read())
        (folder / "xfwm4.xml").write_text(WINDOWS)

    def start_desktop(self):
        self.start("session", "xfce4-session")

    def setting(self, channel, key, kind, value):
        self.run("xfconf-query", "--channel", channel, "--property", key, "--create", "--type", kind, "--set", value)

    def after_start(self):
        self.still_shot(2, 20)

    def bar_to(self, side):
        places = {"top": "p=6;x=0;y=0", "bottom": "p=8;x=0;y=0"}
        self.setting("xfce4-panel", "/panels/panel-1/position", "string", places[side])
        if side == "bottom":
            self.setting("xfce4-panel", "/panels/panel-2/position", "string", places["top"])
        self.side = side
        self.still_shot()

    def set_dark(self, dark):
        if dark:
            self.setting("xsettings", "/Net/ThemeName", "string", "Adwaita-dark")
        else:
            self.run("xfconf-query", "--channel", "xsettings", "--property", "/Net/ThemeName", "--reset")

    def add_monitor(self):
        # Compositing draws nothing on a monitor that is added here.
        self.setting("xfwm4", "/general/use_compositing", "bool", "false")
        return super().add_monitor()

    def set_scale(self, scale):
        self.setting("xsettings", "/Gdk/WindowScalingFactor", "int", str(scale))

    def lock(self):
        # Debian 12 has no screen saver of Xfce, and the locker that it recommends first needs a login manager.
        if HAS_SAVER:
            self.run("xfce4-screensaver-command", "--lock")
        else:
            xscreensaver.lock(self)

    def unlock(self):
        if HAS_SAVER:
            self.run("xfce4-screensaver-command", "--deactivate")
        else:
            xscreensaver.end(self)

    def set_notifications(self, allowed):
        self.run("xfconf-query", "--channel", "xfce4-notifyd", "--property", "/applications/muted_applications",
                 *(["--reset"] if allowed else ["--create", "--force-array", "--type", "string", "--set",
                                                "com.ordwinsoftware.Quillet"]))
