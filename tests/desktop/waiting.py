# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Waiting for conditions, and the clock of a desktop."""
import datetime
import math
import time
import zoneinfo


def poll(what, condition, seconds=10.0, interval=0.1):
    """Calls `condition` until its result is true, and returns that; fails after `seconds`, naming `what`."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"waited {seconds:g} s in vain for {what}")
        time.sleep(interval)


class WallClock:
    """The time of day on a desktop: the machine's, plus a constant if the desktop is in another day.

    A test can skip time if the clock is movable. Only programs started with environment() follow, and only their time
    of day: timers and time limits stay those of the machine, except `with_timers`. Whatever was due in between is then
    due at once."""

    def __init__(self, desktop_environment, file, movable, with_timers=False):
        self.with_timers = with_timers
        self.zone = zoneinfo.ZoneInfo(desktop_environment["TZ"])
        self.offset = int(desktop_environment.get("QUILLET_CLOCK_OFFSET", 0))
        self.file, self.movable = file, movable
        if movable:
            self._write()

    def environment(self, desktop_environment):
        """The environment of a program that uses this clock."""
        if not self.movable:
            return desktop_environment
        # FAKETIME, which a desktop in another day has, would take precedence over the file.
        rest = {name: value for name, value in desktop_environment.items() if name != "FAKETIME"}
        return {**rest, "LD_PRELOAD": "/usr/$LIB/faketime/libfaketimeMT.so.1", "NO_FAKE_STAT": "1",
                "FAKETIME_TIMESTAMP_FILE": str(self.file), "FAKETIME_NO_CACHE": "1",
                "FAKETIME_DONT_FAKE_MONOTONIC": "0" if self.with_timers else "1"}

    def now(self):
        """Seconds since 1970."""
        return time.time() + self.offset

    def local(self, moment):
        """That moment as date and time in the desktop's zone."""
        return datetime.datetime.fromtimestamp(moment, self.zone)

    def skip_to(self, moment):
        """Moves forward to the last whole second before that moment; stays if it is already later."""
        assert self.movable, "this desktop goes by the machine's clock"
        self.offset += max(math.floor(moment - self.now()), 0)
        self._write()

    def set_back(self, seconds):
        """Sets the clock back, as if it had been ahead."""
        assert self.movable, "this desktop goes by the machine's clock"
        self.offset -= seconds
        self._write()

    def _write(self):
        new = self.file.with_suffix(".new")
        new.write_text(f"{self.offset:+d}\n")
        new.replace(self.file)  # readers always see a complete line
