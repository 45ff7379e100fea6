#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Lessons on a calendar server: changes arrive, and no lesson is lost when the server hangs.

    online_road.py Online.aHangingServerLeavesLessonsBannersAndBackupsIntact
    online_road.py Online.aManualReloadFetchesChangesFromTheServer
    online_road.py Online.wakingAndFiveMinutesFetchChangesAndALastingGapIsReportedOnce
"""
import math
import os
import signal
import unittest

from backups import BackupDesktop, identifiers
from calendar_server import CalendarServer
from quillet_desktop import calendar, event, poll
from session_manager import SessionManager

LOADED = "^scheduled system backup notifications lessons="


class Online(unittest.TestCase):
    def end_service(self, desktop):
        """Ends the calendar service, as a reboot does: the next one must query the server."""
        for part in ("evolution-calendar-factory", "evolution-calendar-factory-subprocess"):
            for pid in desktop.processes(part):
                os.kill(pid, signal.SIGKILL)
        poll("the end of the calendar service", lambda: desktop.processes("evolution-calendar-factory") == [])

    def aHangingServerLeavesLessonsBannersAndBackupsIntact(self):
        with BackupDesktop(movable_clock=True) as desktop, CalendarServer(desktop) as server:
            start = math.ceil(desktop.now()) + 3600
            server.put("anna", event("Zoom - Anna", start, start + 1500))
            program = desktop.start_quillet()
            program.wait_for(LOADED + "1$", 30)
            self.assertEqual(sorted(desktop.pending()), sorted(identifiers(start, "Anna")))
            memory = desktop.room / "state/quillet/calendars"
            poll("the calendars on disk", lambda: memory.is_dir() and len(list(memory.glob("*.memory"))) == 2)
            self.assertEqual(program.quit(), 0)
            self.end_service(desktop)
            server.hang()

            program = desktop.start_quillet()
            told = program.wait_for('^calendar did not answer name="Online" .*usesLastAnswer=yes$', 20)
            self.assertLess(told.time - program.started, 8)
            program.wait_for(LOADED + "1$", 20, count=2)
            self.assertEqual(sorted(desktop.pending()), sorted(identifiers(start, "Anna")))
            # A minute later the server still hangs; it is not reported again.
            desktop.skip_to(start - 62)
            self.assertEqual(program.wait_for_banner().state, "prepare")
            banner = program.wait_for_banner(2, 30)
            self.assertEqual(banner.state, "oneMinuteWarning")
            self.assertLess(banner.fired, start - 59)
            self.assertEqual(len(program.find('^calendar did not answer name="Online"')), 1)
            self.assertEqual(program.find("^calendar reload failed"), [])

            server.resume()
            program.wait_for('^calendar answers again name="Online"$', 120)
            self.assertEqual(program.quit(), 0)

    def aManualReloadFetchesChangesFromTheServer(self):
        with BackupDesktop() as desktop, CalendarServer(desktop) as server:
            desktop.write_settings("hasCompletedWelcome=true")
            start = math.ceil(desktop.now()) + 3600
            server.put("anna", event("Zoom - Anna", start, start + 1500))
            program = desktop.start_quillet()
            program.wait_for(LOADED + "1$", 30)
            program.open_panel()
            program.press("Settings")
            poll("the settings", lambda: program.shows("Reload Today's Lessons"))

            server.put("ben", event("Zoom - Ben", start + 3600, start + 5100, uid="ben"))
            program.press("Reload Today's Lessons")
            program.wait_for(LOADED + "2$", 20)
            self.assertEqual(sorted(desktop.pending()),
                             sorted(identifiers(start, "Anna") + identifiers(start + 3600, "Ben")))

            server.put("ben", event("Zoom - Ben", start + 7200, start + 8700, uid="ben"))
            program.press("Reload Today's Lessons")
            poll("the lesson's new time",
                 lambda: (sorted(desktop.pending())
                          == sorted(identifiers(start, "Anna") + identifiers(start + 7200, "Ben"))), 20)

            server.remove("ben")
            program.press("Reload Today's Lessons")
            poll("the end of the lesson", lambda: sorted(desktop.pending()) == sorted(identifiers(start, "Anna")), 20)
            self.assertEqual(program.quit(), 0)

    def wakingAndFiveMinutesFetchChangesAndALastingGapIsReportedOnce(self):
        def gaps():
            return [name for name in desktop.pending() if name.startswith("quillet.calendar-gap.")]

        with BackupDesktop(movable_timers=True) as desktop, CalendarServer(desktop) as server, \
                SessionManager(desktop) as session:
            start = math.ceil(desktop.now()) + 7200
            lesson = event("Zoom - Anna", start, start + 1500)
            server.put("anna", lesson)
            # A truncated calendar, with no earlier answer to fall back on.
            desktop.write_folder_calendar("School.ics", calendar(lesson)[:-60])
            program = desktop.start_quillet(session.environment)
            program.wait_for(LOADED + "1$", 30)
            program.wait_for('^calendar did not answer name="School.ics" .*usesLastAnswer=no$')

            server.put("ben", event("Zoom - Ben", start + 3600, start + 5100, uid="ben"))
            session.wake()
            program.wait_for(LOADED + "2$", 20)
            self.assertIn("School.ics", desktop.status_tool_tip())
            self.assertEqual(gaps(), [])

            # Five minutes later.
            server.put("cleo", event("Zoom - Cleo", start + 5400, start + 6900, uid="cleo"))
            desktop.skip_to(desktop.now() + 301)
            program.wait_for(LOADED + "3$", 20)
            program.wait_for("^calendar gap told$")
            told = gaps()
            self.assertEqual(len(told), 1)

            # Another five minutes later: the gap was already reported.
            server.remove("cleo")
            desktop.skip_to(desktop.now() + 301)
            program.wait_for(LOADED + "2$", 20, count=2)
            self.assertEqual(gaps(), told)
            self.assertEqual(len(program.find("^calendar gap")), 1)
            self.assertEqual(program.quit(), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
