# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Waiting, and the clock of a desktop."""
import datetime
import time
import zoneinfo


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


class WallClock:
    """The time of day on a desktop: the machine's, plus a constant where the desktop stands in another day."""

    def __init__(self, desktop_environment):
        self.zone = zoneinfo.ZoneInfo(desktop_environment["TZ"])
        self.offset = int(desktop_environment.get("QUILLET_CLOCK_OFFSET", 0))

    def now(self):
        """Seconds since 1970."""
        return time.time() + self.offset

    def local(self, moment):
        """That moment as the desktop's people write it."""
        return datetime.datetime.fromtimestamp(moment, self.zone)
