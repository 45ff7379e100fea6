#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""One lesson from the calendar event to the last banner: four minutes, one minute, join, start and finish. Each banner
appears once, never early, without delay, and is seen in a picture. The time between two banners is skipped; each
changeover itself happens in real time.

Three tests, which CTest can run in parallel:

    lesson_road.py Road.aCalendarEventRaisesItsBanners
    lesson_road.py Road.aCalendarFileRaisesItsBannersWithoutACalendarService
    lesson_road.py Road.bannersAppearAboveAFullScreenWindowAndLeaveItTheKeyboard
"""
import math
import os
import subprocess
import unittest

from quillet_desktop import Desktop, calendar, event, report_lateness

TITLES = {
    "prepare": "4 MIN BEFORE NEXT LESSON",
    "oneMinuteWarning": "1 MINUTE BEFORE NEXT LESSON",
    "joinPlatform": "SECONDS",
    "startNow": "START NOW",
    "wrapUp": "FINISH UP ANNA",
}
# The text beside the bell.
ITEM_TITLES = {
    "prepare": "Prepare",
    "oneMinuteWarning": "1 min",
    "joinPlatform": "Join now",
    "startNow": "Start now",
    "wrapUp": "Wrap up",
}
RUN_UP = 3  # seconds of real time before each changeover: long enough for a reload
STAY = 10  # seconds for which a banner stays on the screen


class Road(unittest.TestCase):
    def plan(self, desktop):
        """A lesson of 25 minutes, in ten minutes."""
        self.start = math.ceil(desktop.now()) + 600
        self.end = self.start + 1500
        self.phases = [
            ("prepare", self.start - 240, self.start - 60),
            ("oneMinuteWarning", self.start - 60, self.start - 30),
            ("joinPlatform", self.start - 30, self.start - 20),
            ("startNow", self.start - 20, self.start + 5),
            ("wrapUp", self.end - 60, self.end),
        ]
        return event("Zoom - Anna", self.start, self.end)

    def walk(self, name, desktop, program, at_each=lambda: None):
        program.wait_for("^calendar reload success lessons=1 ")
        for number, (state, begin, end) in enumerate(self.phases, 1):
            desktop.skip_to(begin - RUN_UP)
            banner = program.wait_for_banner(number, max(begin - desktop.now(), 0) + 5)
            report_lateness(name, banner, begin)
            desktop.wait_until_shown(banner, f"{name}-{number}-{state}")
            self.assertEqual(banner.state, state)
            for moment in (banner.fired, banner.shown):
                self.assertGreaterEqual(moment, begin, "early")
                self.assertLess(moment, end, "after its phase")
            self.assertLess(banner.fired, begin + 1.2)
            self.assertEqual(desktop.status_title(), ITEM_TITLES[state])
            texts = program.accessible_texts()
            self.assertTrue(any(TITLES[state] in text for text in texts), texts)
            at_each()
            if state in ("prepare", "oneMinuteWarning"):
                # The next banner has the same colour, so this one must be gone first.
                desktop.wait_until(banner.shown + STAY - 2)
                self.assertTrue(desktop.picture().shows(banner))
                desktop.wait_until_gone(banner, 5)
            if state == "startNow":
                # The lesson begins and its last call ends without another banner.
                desktop.skip_to(self.start - RUN_UP)
                desktop.wait_until(self.start + 7)
                self.assertEqual(desktop.status_title(), "Anna")
                self.assertEqual(len(program.banners()), number)
        # Nothing is announced twice, and nothing after the end.
        desktop.skip_to(self.end - RUN_UP)
        desktop.wait_until(self.end + 2)
        self.assertEqual(desktop.status_title(), "Quillet")
        self.assertEqual([banner.state for banner in program.banners()], [state for state, _, _ in self.phases])
        self.assertEqual(len(program.find("^notification should fire ")), len(self.phases))
        self.assertEqual(len(program.find("^sound played name=Glass$")), len(self.phases))
        self.assertEqual(program.quit(), 0)

    def aCalendarEventRaisesItsBanners(self):
        with Desktop(movable_clock=True) as desktop:
            desktop.write_system_calendar(self.plan(desktop))
            self.walk("calendar-event", desktop, desktop.start_quillet())

    def aCalendarFileRaisesItsBannersWithoutACalendarService(self):
        with Desktop(calendar_service=False, movable_clock=True) as desktop:
            desktop.write_folder_calendar("lessons.ics", calendar(self.plan(desktop)))
            self.walk("calendar-file", desktop, desktop.start_quillet())
            self.assertEqual(desktop.processes("evolution-calendar-factory"), [])

    def bannersAppearAboveAFullScreenWindowAndLeaveItTheKeyboard(self):
        with Desktop(movable_clock=True) as desktop:
            desktop.write_system_calendar(self.plan(desktop))
            opponent = desktop.popen(os.environ["QUILLET_TEST_OPPONENT"], stdout=subprocess.PIPE, text=True)
            self.assertEqual(opponent.stdout.readline(), "ready\n")
            opponent_window = desktop.active_window()
            program = desktop.start_quillet()

            def keyboard_stays():
                self.assertEqual(desktop.active_window(), opponent_window)
                desktop.run("xdotool", "key", "q")
                self.assertEqual(opponent.stdout.readline(), "q\n")
            self.walk("full-screen", desktop, program, keyboard_stays)
            opponent.terminate()
            opponent.wait()
            opponent.stdout.close()


if __name__ == "__main__":
    unittest.main(verbosity=2)
