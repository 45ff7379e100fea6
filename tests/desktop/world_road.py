#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""The running program notices changes of the machine: its clock, zone, sleep and missing parts.

    world_road.py World.afterAClockSetBackDuringSleepLessonsBannersAndBackupsAreRight
    world_road.py World.aZoneChangeRestartsItAndAnnouncesTheRunningPhaseAgain
    world_road.py World.automaticSleepIsInhibitedForALessonAndReleased
    world_road.py World.theCheckBeforeTheFirstLessonFindsAllReady
    world_road.py World.aMissingAgentIsReportedBeforeTheFirstLesson
    world_road.py World.aMissingSoundServerIsReportedBeforeTheFirstLesson
"""
import datetime
import math
import pathlib
import subprocess
import unittest
import zoneinfo

from backups import BackupDesktop, identifier, identifiers
from events import utc
from quillet_desktop import event, poll
from short_roads import in_join_phase

HERE = pathlib.Path(__file__).resolve().parent
SIX_HOURS = 6 * 3600


def link(file, zone):
    """Sets the machine's time zone, as its settings do."""
    new = file.with_suffix(".new")
    new.symlink_to(f"/usr/share/zoneinfo/{zone}")
    new.replace(file)


def neighbour(local):
    """A zone whose UTC offset differs by an hour from that moment's."""
    hours = int(local.utcoffset().total_seconds() // 3600)
    hours += -1 if hours > 0 else 1
    return f"Etc/GMT{-hours:+d}" if hours else "Etc/GMT"


def started_at(program):
    """When the program's process started, in the kernel's ticks."""
    return pathlib.Path(f"/proc/{program.process.pid}/stat").read_text().rpartition(") ")[2].split()[19]


class World(unittest.TestCase):
    def test_list_is_empty_so_that_each_road_is_named(self):
        self.fail("name the test to run")

    # --- the clock

    def afterAClockSetBackDuringSleepLessonsBannersAndBackupsAreRight(self):
        with BackupDesktop(movable_clock=True) as desktop:
            address = f"unix:path={desktop.room}/run/system-bus"
            daemon = desktop.start_bus("--session", f"--address={address}")
            start = math.ceil(desktop.now()) + 1800
            desktop.write_lessons(event("Zoom - Anna", start, start + 1500))
            desktop.skip_to(desktop.now() + SIX_HOURS)
            program = desktop.start_quillet({"DBUS_SYSTEM_BUS_ADDRESS": address})
            program.wait_for("^scheduled system backup notifications lessons=0$")
            self.assertEqual(desktop.pending(), [])

            # By the clock alone, the next load would be due in six hours.
            desktop.set_clock_back(SIX_HOURS)
            desktop.run("env", f"DBUS_SYSTEM_BUS_ADDRESS={address}", "gdbus", "emit", "--system", "--object-path",
                        "/org/freedesktop/login1", "--signal", "org.freedesktop.login1.Manager.PrepareForSleep",
                        "false")
            program.wait_for("^scheduled system backup notifications lessons=1$", 5)
            self.assertEqual(sorted(desktop.pending()), sorted(identifiers(start, "Anna")))
            desktop.skip_to(start - 240)
            banner = program.wait_for_banner()
            self.assertEqual(banner.state, "prepare")
            self.assertLess(banner.fired, start - 240 + 1.2)
            self.assertEqual(program.quit(), 0)
            daemon.terminate()
            daemon.wait()

    # --- the zone

    def aZoneChangeRestartsItAndAnnouncesTheRunningPhaseAgain(self):
        with BackupDesktop() as desktop:
            file = desktop.room / "localtime"
            here = desktop.environment["TZ"]
            link(file, here)
            start, lesson = in_join_phase(desktop)
            # Two o'clock in local time, without a zone: the lesson moves with the teacher.
            local = desktop.clock.local(desktop.now()).replace(hour=14, minute=0, second=0, microsecond=0)
            two, end = local.timestamp(), local + datetime.timedelta(minutes=25)
            desktop.write_lessons(lesson, event("Zoom - Ben", two, end.timestamp())
                                  .replace(utc(two), f"{local:%Y%m%dT%H%M%S}")
                                  .replace(utc(end.timestamp()), f"{end:%Y%m%dT%H%M%S}"))
            program = desktop.start_quillet({"TZ": f":{file}"})
            self.assertEqual(program.wait_for_banner().state, "joinPlatform")
            poll("the bell", lambda: len(desktop.status_items()) == 1)
            poll("the backups", lambda: identifier("prepare", int(two), "Ben") in desktop.pending())
            start_ticks = started_at(program)

            # Setting the same zone again is no change.
            link(file, here)
            link(file, there := neighbour(local))
            program.wait_for("^app started$", count=2)
            self.assertEqual(program.find("^time zone changed ")[0].message,
                             f"time zone changed from={here} to={there}; restarting")
            banner = program.wait_for_banner(2)
            self.assertEqual(banner.state, "joinPlatform")
            desktop.wait_until_shown(banner, "another-zone")
            # It is still the same process for its parent, and the only Quillet.
            self.assertEqual(started_at(program), start_ticks)
            self.assertEqual(desktop.processes("quillet"), [program.process.pid])
            poll("the bell", lambda: len(desktop.status_items()) == 1)
            moved = local.replace(tzinfo=zoneinfo.ZoneInfo(there)).timestamp()
            poll("Ben's lesson in the new zone",
                 lambda: identifier("prepare", int(moved), "Ben") in desktop.pending())
            self.assertNotIn(identifier("prepare", int(two), "Ben"), desktop.pending())
            self.assertEqual(desktop.windows("Quillet.*"), [])
            second = desktop.start_quillet({"TZ": f":{file}"})
            self.assertEqual(second.wait_for_end(), 0)
            # No further start, and no further banner of this phase.
            desktop.wait_until(start - 18)
            self.assertEqual([banner.state for banner in program.banners()],
                             ["joinPlatform", "joinPlatform", "startNow"])
            self.assertEqual(len(program.find("^app started$")), 2)
            self.assertEqual(program.quit(), 0)

    # --- sleep

    def automaticSleepIsInhibitedForALessonAndReleased(self):
        with BackupDesktop(movable_clock=True) as desktop:
            portal = desktop.popen("/usr/bin/python3", str(HERE / "sleep_portal.py"), stdout=subprocess.PIPE, text=True)
            self.assertEqual(portal.stdout.readline(), "ready\n")
            start = math.ceil(desktop.now()) + 7200
            lesson = event("Zoom - Anna", start, start + 1500)
            desktop.write_lessons(lesson)
            program = desktop.start_quillet()
            program.wait_for("^calendar reload success lessons=1 ")
            self.assertEqual(program.find("^automatic sleep "), [])
            desktop.skip_to(start - 3600)
            # Of the portal's four flags, only the one for suspending (4).
            self.assertEqual(portal.stdout.readline(), "held 4\n")
            program.wait_for("^automatic sleep prevented through=org.freedesktop.portal.Desktop$")
            # Wait for this load to end: it would bring the lesson back, and the next one is only due in a minute.
            program.wait_for("^calendar reload success lessons=1 ", count=2)
            desktop.write_lessons()
            desktop.skip_to(desktop.now() + 60)
            self.assertEqual(portal.stdout.readline(), "released\n")
            program.wait_for("^calendar reload success lessons=0 ")
            desktop.write_lessons(lesson)
            desktop.skip_to(desktop.now() + 60)
            self.assertEqual(portal.stdout.readline(), "held 4\n")
            self.assertEqual(program.quit(), 0)
            self.assertEqual(portal.stdout.readline(), "released\n")
            portal.terminate()
            portal.communicate()

    # --- the look before the first lesson

    def theCheckBeforeTheFirstLessonFindsAllReady(self):
        with BackupDesktop(movable_clock=True) as desktop:
            start = math.ceil(desktop.now()) + 7200
            desktop.write_lessons(event("Zoom - Anna", start, start + 1500))
            program = desktop.start_quillet()
            program.wait_for("^scheduled system backup notifications lessons=1$")
            self.assertEqual(program.find("^before the first lesson: "), [])
            desktop.skip_to(start - 1200)
            said = program.wait_for("^before the first lesson: ")
            self.assertEqual(said.message, "before the first lesson: all is ready")
            self.assertEqual(desktop.notifications(), [])
            self.assertEqual(program.quit(), 0)

    def aMissingAgentIsReportedBeforeTheFirstLesson(self):
        with BackupDesktop() as desktop:
            (desktop.room / "services/notification-agent.service").unlink()
            desktop.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.ReloadConfig")
            start = math.ceil(desktop.now()) + 900
            desktop.write_lessons(event("Zoom - Anna", start, start + 1500))
            program = desktop.start_quillet()
            program.wait_for("^before the first lesson: missing backups$", 60)
            program.wait_for("^before the first lesson: told$")
            (told,) = poll("the notification", desktop.notifications)
            self.assertEqual(told.body, "Notifications are not prepared: quit Quillet and start it again.")
            self.assertEqual(program.quit(), 0)

    def aMissingSoundServerIsReportedBeforeTheFirstLesson(self):
        with BackupDesktop(without=["sound"]) as desktop:
            start = math.ceil(desktop.now()) + 900
            desktop.write_lessons(event("Zoom - Anna", start, start + 1500))
            program = desktop.start_quillet()
            program.wait_for("^before the first lesson: missing sound$", 60)
            program.wait_for("^before the first lesson: told$")
            (told,) = poll("the notification", desktop.notifications)
            self.assertEqual((told.title, told.body), ("Please check before your first lesson",
                                                       "There is no sound: check your sound settings."))
            self.assertEqual(program.quit(), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
