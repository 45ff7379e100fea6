# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""LXQt with Openbox, started by its session manager."""
import os
import signal

import xscreensaver
from quillet_desktop import poll
from session import HOME, X11Session

SESSION = """[General]
window_manager=openbox
"""
# As its settings write it.
DARK = """
[Palette]
base_color=#202020
highlight_color=#3a6ea5
highlighted_text_color=#ffffff
text_color=#f0f0f0
window_color=#303030
window_text_color=#f0f0f0
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
        self.still_shot(2, 20)

    def bar_to(self, side):
        for pid in self.pids_of("lxqt-panel"):
            os.kill(pid, signal.SIGTERM)
        poll("the bar's end", lambda: not self.pids_of("lxqt-panel"))
        file = HOME / ".config/lxqt/panel.conf"
        lines = [line for line in file.read_text().splitlines() if not line.startswith("position=")]
        lines.insert(lines.index("[panel1]") + 1, f"position={side.capitalize()}")
        file.write_text("\n".join([*lines, ""]))
        self.start("panel", "lxqt-panel")
        poll("the bar", self.has_host, 20, 0.5)
        self.side = side
        self.still_shot()

    def set_dark(self, dark):
        file = HOME / ".config/lxqt/lxqt.conf"
        text = file.read_text() if file.exists() else ""
        file.write_text(text.replace(DARK, "") + (DARK if dark else ""))

    def set_scale(self, scale):
        # Its settings write this variable to the session's environment.
        self.environment["QT_SCALE_FACTOR"] = str(scale)
        self.relaunch()

    def lock(self):
        xscreensaver.lock(self)

    def unlock(self):
        xscreensaver.end(self)
