# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""A clock that runs faster than the machine's, the same for all programs that use it."""
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
SETTLE = 1.5  # machine seconds until a jump has reached every program: the library looks once a second


class FasterClock:
    """Runs the time of day, timers and time limits of programs started with environment() `pace` times as fast.

    libfaketime counts from the start of each process, or from a moment in shared memory if there is one. The shared
    moment makes programs that the bus starts later agree with the earlier ones. The memory's layout: two counters, then
    the start (seconds and nanoseconds) on each clock; -1 nanoseconds means that it is not set, and the first process
    stores its own start."""

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
        self.times = []  # (machine time, origin): from that time on, this clock counts from that origin
        self._set(int(time.time()))
        subprocess.run(["date"], env={**os.environ, "TZ": zone, **self.variables}, check=True, capture_output=True)
        seconds, nanoseconds = struct.unpack_from("<qq", self.memory.read_bytes(), 16)
        self.start = seconds + nanoseconds / 1e9
        assert abs(self.start - time.time()) < 10, "libfaketime keeps its start elsewhere"

    def environment(self, desktop_environment):
        """The environment of a program that uses this clock."""
        return {**desktop_environment, **self.variables}

    def now(self):
        """Seconds since 1970."""
        return self.at(time.time())

    def at(self, moment):
        """What this clock showed at a moment of the machine's clock."""
        origin = next((origin for since, origin in reversed(self.times) if since <= moment), self.times[0][1])
        return origin + (moment - self.start) * self.pace

    def local(self, moment):
        return datetime.datetime.fromtimestamp(moment, self.zone)

    def wait_until(self, moment):
        while (left := moment - self.now()) > 0:
            time.sleep(left / self.pace)

    def jump_to(self, moment):
        """Moves all programs to that moment and waits until they have noticed."""
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
