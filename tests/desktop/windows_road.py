#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""A newcomer's first quarter of an hour in the windows, the way a screen reader and a keyboard go it.

    windows_road.py Windows.setupLeadsToALessonEnteredByHandAndItsBanners
"""
import datetime
import time
import unittest

from quillet_desktop import Desktop, poll


class Windows(unittest.TestCase):
    def test_list_is_empty_so_that_each_road_is_named(self):
        self.fail("name the road to walk")

    def wait_for_text(self, program, text, seconds=15.0):
        poll(f"the text {text!r}", lambda: program.shows(text), seconds)

    def finish_setup(self, desktop, program):
        """The panel opens the setup by itself until it is finished."""
        program.open_panel()
        self.wait_for_text(program, "Welcome to Quillet")
        for page in range(1, 5):
            self.wait_for_text(program, f"Page {page} of 5")
            program.press("Continue")
        self.wait_for_text(program, "You Are Ready")
        program.press("Finish")
        poll("the setup to close", lambda: not program.shows("You Are Ready"))
        self.assertEqual(desktop.setting("hasCompletedWelcome"), "true")

    def add_lesson(self, desktop, program, name, start):
        """Types the name and the time of day, and presses Enter in the name."""
        program.focus("Start")
        # From the day over month and year to the hour; the cursor goes on to the minute by itself.
        desktop.run("xdotool", "key", "Tab", "Tab", "Tab")
        desktop.run("xdotool", "type", "--delay", "100", datetime.datetime.fromtimestamp(start).strftime("%H%M"))
        program.focus("Student name")
        desktop.run("xdotool", "type", "--delay", "100", name)
        desktop.run("xdotool", "key", "Return")
        self.wait_for_text(program, name)

    def whole_minute(self, least_seconds):
        """The first whole minute that is at least so far off."""
        return (int(time.time()) + least_seconds + 59) // 60 * 60

    def setupLeadsToALessonEnteredByHandAndItsBanners(self):
        with Desktop() as desktop:
            program = desktop.start_quillet()
            self.finish_setup(desktop, program)
            program.open_panel()
            program.press("Settings")
            self.wait_for_text(program, "Manual Lesson Entry")

            # Within four minutes of its start a lesson is announced at once, whatever the minute of the reload.
            start = self.whole_minute(120)
            loads = len(program.find("^calendar reload success"))
            added = time.time()
            self.add_lesson(desktop, program, "Anna", start)
            banner = program.wait_for_banner(1, 5)
            self.assertEqual(banner.state, "prepare")
            self.assertGreater(len(program.find("^calendar reload success")), loads)
            self.assertLess(banner.fired - added, 20)  # typing included
            desktop.wait_until_shown(banner, "windows-center")

            # The next banner stands where it was told to, as long as it was told to.
            program.choose("Popup Position", "Top Right")
            program.choose("Notification Duration", "5 seconds")
            self.assertEqual(desktop.setting("notificationPosition"), "topRight")
            self.assertEqual(float(desktop.setting("notificationDuration")), 5.0)
            following = program.wait_for_banner(2, start - time.time())
            self.assertEqual(following.state, "oneMinuteWarning")
            desktop.wait_until_shown(following, "windows-top-right")
            self.assertGreater(following.left, banner.left)
            self.assertLess(following.top, banner.top)
            desktop.wait_until_gone(following, 7)
            self.assertGreater(time.time() - following.shown, 4.5)

            # Once removed, it is not announced again.
            program.press("Remove")
            poll("the row to go", lambda: not program.shows("Remove"))
            self.assertIn("[]", desktop.setting("manualLessons"))
            poll("the lesson's start", lambda: time.time() > start + 3, 120, 0.5)
            self.assertEqual([banner.state for banner in program.banners()], ["prepare", "oneMinuteWarning"])
            self.assertEqual(program.quit(), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
