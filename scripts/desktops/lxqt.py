# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""LXQt with Openbox, started by its session manager."""
import time

from report import NotSeen
from session import HOME, X11Session

SESSION = """[General]
window_manager=openbox
"""


class Lxqt(X11Session):
    desktop_name = "LXQt"
    side = "bottom"
    variables = {"XDG_SESSION_DESKTOP": "LXQt", "DESKTOP_SESSION": "LXQt", "XDG_CONFIG_DIRS": "/usr/share:/etc/xdg",
                 "XDG_MENU_PREFIX": "lxqt-", "QT_QPA_PLATFORMTHEME": "lxqt", "QT_PLATFORM_PLUGIN": "lxqt"}

    def prepare(self):
        super().prepare()
        (HOME / ".config/lxqt").mkdir(parents=True, exist_ok=True)
        (HOME / ".config/lxqt/session.conf").write_text(SESSION)

    def start_desktop(self):
        self.start("session", "lxqt-session")

    def after_start(self):
        time.sleep(3)  # no signal tells when the session is complete

    def bar_to(self, side):
        self.run("sh", "-c", "sed -i 's/^position=.*/position=" + side.capitalize() + "/' ~/.config/lxqt/panel.conf; "
                 "grep -q '^position=' ~/.config/lxqt/panel.conf || "
                 "sed -i 's/^\\[panel1\\]/&\\nposition=" + side.capitalize() + "/' ~/.config/lxqt/panel.conf; "
                 "kill $(pidof lxqt-panel)")
        self.side = side
        time.sleep(5)  # until the session has restarted it

    def set_scale(self, scale):
        # Its settings write this variable to the session's environment.
        self.environment["QT_SCALE_FACTOR"] = str(scale)
        self.relaunch()

    def lock(self):
        self.start("screen-saver", "xscreensaver", "--no-splash")
        time.sleep(3)  # until it accepts commands
        self.run("xscreensaver-command", "--lock")

    def unlock(self):
        raise NotSeen("Its screen saver needs a password.")
