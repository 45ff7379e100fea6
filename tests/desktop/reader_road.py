#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""What a screen reader learns about the whole program.

    reader_road.py Reader.everyWindowTellsAScreenReaderItsParts
"""
import unittest

from quillet_desktop import Desktop, event, poll

HEADINGS = {
    "Quillet": ["Today’s schedule"],
    "Quillet Settings": ["Settings", "Calendar Connection", "Manual Lesson Entry", "Reminders & Display", "Help"],
    "Quillet Help": ["Quillet Help", "Welcome", "What Quillet Does"],
    "About Quillet": ["Quillet"],
    "Debug Window": ["Debug Window", "Now", "Calendars", "Not lessons today", "Log"],
    "Welcome to Quillet": ["Welcome to Quillet"],
}
GROUPS = {
    "Quillet Settings": ["Calendar Connection", "Manual Lesson Entry", "Reminders & Display", "Help"],
    "Debug Window": ["Now", "Calendars", "Not lessons today", "Log"],
}
COMMANDS = {"Settings": "Quillet Settings", "User Manual": "Quillet Help", "About Quillet": "About Quillet",
            "Show Debug Window": "Debug Window", "Quick Start": "Welcome to Quillet"}


def named(found, role):
    return [name for it, name in found if it == role]


class Reader(unittest.TestCase):
    def test_list_is_empty_so_that_each_road_is_named(self):
        self.fail("name the test to run")

    def everyWindowTellsAScreenReaderItsParts(self):
        with Desktop() as desktop:
            # The join banner of this platform stays for most of a minute.
            start = int(desktop.now()) + 58
            desktop.write_settings("hasCompletedWelcome=true")
            desktop.write_system_calendar(event("Microsoft Teams - Anna", start, start + 2700))
            program = desktop.start_quillet()
            program.wait_for_banner()
            poll("the banner", lambda: program.shows("Close reminder"))
            banner = program.accessible_roles("Quillet reminder")
            self.assertEqual(banner[0], ("frame", "Quillet reminder"))
            role, name = banner[1]
            self.assertIn(role, ["notification", "alert"])  # depends on the version of Qt
            self.assertIn(". Anna. ", name)
            self.assertIn(("label", "Anna"), banner)
            self.assertIn("Close reminder", [name for _, name in banner])
            program.open_panel()
            self.look_at(program, "Quillet")
            for command, title in COMMANDS.items():
                program.open_panel()
                program.press(command, "Quillet")
                poll(title, lambda: desktop.windows(title))
                found = self.look_at(program, title)
                if title == "About Quillet":
                    self.assertEqual(named(found, "link"), ["quillet.example", "support@quillet.example"])
            self.assertRegex(desktop.status_tool_tip(), "Anna.*Microsoft Teams")
            self.assertEqual(program.quit(), 0)

    def look_at(self, program, title):
        def look():
            found = program.accessible_roles(title)
            return found if named(found, "heading") == HEADINGS[title] else None
        found = poll(f"the headings of {title}", look, 20)
        self.assertEqual(found[0], ("frame", title))
        self.assertEqual([name for name in named(found, "panel") if name in GROUPS.get(title, [])],
                         GROUPS.get(title, []))
        return found


if __name__ == "__main__":
    unittest.main(verbosity=2)
