#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""A virtual desktop has its own day, whatever the machine's clock shows.

    own_day.py OwnDay.itIsMorningAtEveryHourOfTheMachine
"""
import datetime
import os
import pathlib
import subprocess
import time
import unittest
import unittest.mock
import zoneinfo

from quillet_desktop import SOURCE, Desktop


class OwnDay(unittest.TestCase):
    def test_list_is_empty_so_that_each_road_is_named(self):
        self.fail("name the test to run")

    def desktop_of(self, **environment):
        """A desktop started from that environment."""
        kept = {name: value for name, value in os.environ.items() if name != "QUILLET_TEST_DAY"}
        with unittest.mock.patch.dict(os.environ, {**kept, **environment}, clear=True):
            return Desktop()

    def itIsMorningAtEveryHourOfTheMachine(self):
        for day in ("2026-12-21", "2027-03-28", "2027-06-21", "2027-10-31"):
            midnight = int(datetime.datetime.fromisoformat(f"{day}T00:00:00+00:00").timestamp())
            for moment in range(midnight, midnight + 86400, 1799):
                done = subprocess.run([str(SOURCE / "scripts/morning-zone"), str(moment)], capture_output=True,
                                      text=True)
                self.assertEqual(done.returncode, 0, done.stderr)
                there = datetime.datetime.fromtimestamp(moment, zoneinfo.ZoneInfo(done.stdout.strip()))
                self.assertEqual(there.hour, 10, there)

    def onAMachineAtNightItIsMorningOnTheDesktop(self):
        hour = datetime.datetime.now(datetime.timezone.utc).hour
        with self.desktop_of(TZ=f"NIGHT{hour - 23:+d}") as desktop:
            self.assertEqual(desktop.run("date", "+%H").strip(), "10")
            self.assertEqual(desktop.clock.local(desktop.now()).hour, 10)

    def aDayCanBeChosen(self):
        with self.desktop_of(QUILLET_TEST_DAY="2027-03-28 Europe/Berlin") as desktop:
            self.assertEqual(desktop.run("date", "+%F %H %Z").strip(), "2027-03-28 10 CEST")
            self.assertEqual(f"{desktop.clock.local(desktop.now()):%F %H %Z}", "2027-03-28 10 CEST")
            # Programs started by the bus are in that day, too.
            (service,) = desktop.processes("xfconfd")
            self.assertIn("libfaketime", pathlib.Path(f"/proc/{service}/maps").read_text())

    def skippingMovesOnlyTheTimeOfDay(self):
        with Desktop(movable_clock=True) as desktop:
            program = subprocess.Popen(
                ["/usr/bin/python3", "-c",
                 "import time\nwhile input(): print(time.time(), time.monotonic(), flush=True)"],
                env=desktop.clock.environment(desktop.environment), stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                text=True)

            def look():
                program.stdin.write("look\n")
                program.stdin.flush()
                of_day, since_start = map(float, program.stdout.readline().split())
                self.assertAlmostEqual(of_day, desktop.now(), delta=1)
                self.assertAlmostEqual(since_start, time.monotonic(), delta=1)
            look()
            before = desktop.now()
            desktop.skip_to(before + 1800)
            self.assertAlmostEqual(desktop.now(), before + 1800, delta=2)
            look()
            program.communicate("\n")


if __name__ == "__main__":
    unittest.main(verbosity=2)
