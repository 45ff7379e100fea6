# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""A clock that runs faster than the machine's, one and the same for all programs that go by it."""
import _multiprocessing
import datetime
import os
import pathlib
import struct
import subprocess
import time
import zoneinfo

SOURCE = pathlib.Path(__file__).resolve().parents[2]
LIBRARY = "/usr/$LIB/faketime/libfaketimeMT.so.1"
SETTLE = 1.5  # seconds of the machine until a jump has reached every program: the library looks once a second


class FasterClock:
    """The time of day, timers and time limits of the programs that have environment(), `pace` times as fast as here.

    libfaketime counts from the start of each process, or from a moment in shared memory where it finds one: only so
    does a program that the bus has started agree with the one that it follows. In that memory the library has two
    counters, then the moment of the start (seconds and nanoseconds) on each clock; -1 nanoseconds stand for no moment
    yet, and the first process notes its own."""

    def __init__(self, zone, folder, pace):
        self.zone, self.pace = zoneinfo.ZoneInfo(zone), pace
        self.file = folder / "clock"
        self.memory = pathlib.Path(f"/dev/shm/quillet-clock-{os.getpid()}")
        self.lock = pathlib.Path(f"/dev/shm/sem.quillet-clock-{os.getpid()}")
        _multiprocessing.SemLock(1, 1, 1, f"/quillet-clock-{os.getpid()}", False)
        self.memory.write_bytes(struct.pack("<QQqq", 0, 0, 0, -1).ljust(4096, b"\0"))
        name = self.memory.name
        timers = SOURCE / "build/dev/tests/desktop/far-timers.so"
        self.variables = {"LD_PRELOAD": f"{timers}:{LIBRARY}", "NO_FAKE_STAT": "1", "FAKETIME_CACHE_DURATION": "1",
                          "FAKETIME_DONT_RESET": "1", "FAKETIME_TIMESTAMP_FILE": str(self.file),
                          "FAKETIME_SHARED": f"/{name} /{name}"}
        self.times = []  # from that moment on (of the machine), the clock counts from that one
        self._set(int(time.time()))
        subprocess.run(["date"], env={**os.environ, "TZ": zone, **self.variables}, check=True, capture_output=True)
        seconds, nanoseconds = struct.unpack_from("<qq", self.memory.read_bytes(), 16)
        self.start = seconds + nanoseconds / 1e9
        assert abs(self.start - time.time()) < 10, "libfaketime keeps its start elsewhere"

    def environment(self, desktop_environment):
        """What a program that goes by this clock finds in its environment."""
        return {**desktop_environment, **self.variables}

    def now(self):
        """Seconds since 1970."""
        return self.at(time.time())

    def at(self, moment):
        """What this clock showed at a moment of the machine's."""
        origin = next((origin for since, origin in reversed(self.times) if since <= moment), self.times[0][1])
        return origin + (moment - self.start) * self.pace

    def local(self, moment):
        return datetime.datetime.fromtimestamp(moment, self.zone)

    def wait_until(self, moment):
        while (left := moment - self.now()) > 0:
            time.sleep(left / self.pace)

    def jump_to(self, moment):
        """All programs are at that moment soon, as after a night that nobody has waited for."""
        self._set(int(moment - (time.time() - self.start) * self.pace))
        time.sleep(SETTLE)

    def _set(self, origin):
        new = self.file.with_suffix(".new")
        new.write_text(f"@{self.local(origin):%Y-%m-%d %H:%M:%S} x{self.pace}\n")
        new.replace(self.file)
        self.times.append((time.time(), origin))

    def end(self):
        self.memory.unlink(missing_ok=True)
        self.lock.unlink(missing_ok=True)
