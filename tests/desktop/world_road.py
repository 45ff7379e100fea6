#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""The machine changes under the running program, which notices at once.

    world_road.py World.afterAClockThatWasSetBackInASleepLessonsBannersAndBackupsAreRight
"""
import math
import unittest

from backups import BackupDesktop, identifiers
from quillet_desktop import event, poll

SIX_HOURS = 6 * 3600


class World(unittest.TestCase):
    def test_list_is_empty_so_that_each_road_is_named(self):
        self.fail("name the road to walk")

    # --- the clock

    def afterAClockThatWasSetBackInASleepLessonsBannersAndBackupsAreRight(self):
        with BackupDesktop(movable_clock=True) as desktop:
            address = f"unix:path={desktop.room}/run/system-bus"
            daemon = desktop.popen("dbus-daemon", "--session", "--nofork", "--nopidfile", f"--address={address}")
            poll("the system bus", (desktop.room / "run/system-bus").exists)
            start = math.ceil(desktop.now()) + 1800
            desktop.write_lessons(event("Zoom - Anna", start, start + 1500))
            desktop.skip_to(desktop.now() + SIX_HOURS)
            program = desktop.start_quillet({"DBUS_SYSTEM_BUS_ADDRESS": address})
            program.wait_for("^scheduled system backup notifications lessons=0$")
            self.assertEqual(desktop.pending(), [])

            # By the clock alone the next load is due in six hours.
            desktop.set_clock_back(SIX_HOURS)
            desktop.run("env", f"DBUS_SYSTEM_BUS_ADDRESS={address}", "gdbus", "emit", "--system", "--object-path",
                        "/org/freedesktop/login1", "--signal", "org.freedesktop.login1.Manager.PrepareForSleep", "false")
            program.wait_for("^scheduled system backup notifications lessons=1$", 5)
            self.assertEqual(sorted(desktop.pending()), sorted(identifiers(start, "Anna")))
            desktop.skip_to(start - 240)
            banner = program.wait_for_banner()
            self.assertEqual(banner.state, "prepare")
            self.assertLess(banner.fired, start - 240 + 1.2)
            self.assertEqual(program.quit(), 0)
            daemon.terminate()
            daemon.wait()


if __name__ == "__main__":
    unittest.main(verbosity=2)
