# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""MATE, started by its session manager."""
from session import X11Session


class Mate(X11Session):
    desktop_name = "MATE"
    variables = {"XDG_SESSION_DESKTOP": "mate", "DESKTOP_SESSION": "mate", "XDG_MENU_PREFIX": "mate-",
                 "XDG_CONFIG_DIRS": "/etc/xdg"}

    def start_desktop(self):
        self.start("session", "mate-session")

    def after_start(self):
        self.still_shot(2, 20)

    def bar_to(self, side):
        # The default layout has a bar at both edges; the upper one contains the bell.
        self.run("gsettings", "set", "org.mate.panel.toplevel:/org/mate/panel/toplevels/bottom/", "orientation",
                 "top" if side == "bottom" else "bottom")
        self.run("gsettings", "set", "org.mate.panel.toplevel:/org/mate/panel/toplevels/top/", "orientation", side)
        self.side = side
        self.still_shot()

    def set_dark(self, dark):
        self.run("gsettings", "set", "org.mate.interface", "gtk-theme", "Adwaita-dark" if dark else "Adwaita")

    def add_monitor(self):
        # Compositing draws nothing on a monitor that is added here.
        self.run("gsettings", "set", "org.mate.Marco.general", "compositing-manager", "false")
        return super().add_monitor()

    def set_scale(self, scale):
        self.run("gsettings", "set", "org.mate.interface", "window-scaling-factor", str(scale))

    def lock(self):
        self.run("mate-screensaver-command", "--lock")

    def unlock(self):
        self.run("mate-screensaver-command", "--deactivate")
