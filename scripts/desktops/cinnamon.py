# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Cinnamon, with the session's settings and status item services."""
from session import X11Session, start_xvfb


class Cinnamon(X11Session):
    desktop_name = "X-Cinnamon"
    side = "bottom"
    variables = {"XDG_SESSION_DESKTOP": "cinnamon", "DESKTOP_SESSION": "cinnamon", "XDG_CONFIG_DIRS": "/etc/xdg"}

    @staticmethod
    def as_root(monitors):
        # Its compositor draws nothing on the dummy driver.
        start_xvfb("2560x1600")

    def start_desktop(self):
        self.run("gsettings", "set", "org.cinnamon.desktop.screensaver", "lock-enabled", "true")
        self.start("settings", "/usr/bin/csd-xsettings")
        self.start("status-items", "/usr/lib/x86_64-linux-gnu/xapps/xapp-sn-watcher")
        self.start("shell", "cinnamon", "--replace")
        self.start("screen-saver", "cinnamon-screensaver")

    def after_start(self):
        self.still_shot(2, 20)

    def bar_to(self, side):
        self.run("gsettings", "set", "org.cinnamon", "panels-enabled", f"['1:0:{side}']")
        self.side = side
        self.still_shot()

    def set_dark(self, dark):
        self.run("gsettings", "set", "org.cinnamon.desktop.interface", "gtk-theme",
                 "Adwaita-dark" if dark else "Adwaita")
        self.run("gsettings", "set", "org.x.apps.portal", "color-scheme", "prefer-dark" if dark else "prefer-light")

    def set_scale(self, scale):
        self.run("gsettings", "set", "org.cinnamon.desktop.interface", "scaling-factor", str(scale))
        self.relaunch()

    def lock(self):
        self.run("cinnamon-screensaver-command", "--lock", seconds=60)

    def unlock(self):
        self.run("cinnamon-screensaver-command", "--deactivate", seconds=60)
