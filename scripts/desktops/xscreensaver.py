# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""XScreenSaver, a locker that some sessions recommend but do not start."""
import os
import signal

from quillet_desktop import poll
from report import NotSeen, ToolFailed


def lock(session):
    def is_up():
        try:
            return "XScreenSaver" in session.run("xscreensaver-command", "-version")
        except ToolFailed:
            return False
    session.start("screen-saver", "xscreensaver", "--no-splash")
    poll("the screen saver", is_up, 15, 0.3)
    session.run("xscreensaver-command", "--lock")


def end(session):
    """Ends the saver for the next steps."""
    for pid in session.pids_below("/usr/libexec/xscreensaver", "/usr/bin/xscreensaver"):
        os.kill(pid, signal.SIGKILL)
    raise NotSeen("Unlocking needs a password.")
