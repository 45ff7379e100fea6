#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""What Orca says while a teacher walks through the program, compared with speech-VERSION.txt.

    speech_road.py Speech.orcaSaysWhatATeacherNeeds

When a step differs, the test prints the walk so far in the form of that file."""
import pathlib
import re
import subprocess
import unittest

from quillet_desktop import Desktop, event, poll
from screen_reader import ScreenReader


def expected_steps():
    """Pairs of a step and the list of what is said after it, by the latest known version that is not newer."""
    version = int(re.search(r"\d+", subprocess.check_output(["orca", "--version"], text=True))[0])
    known = {int(file.stem.split("-")[1]): file for file in pathlib.Path(__file__).parent.glob("speech-*.txt")}
    steps = []
    for line in known[max(number for number in known if number <= version)].read_text().splitlines():
        if line.startswith("    "):
            steps[-1][1].append(line.strip())
        elif line and not line.startswith("#"):
            steps.append((line, []))
    return steps


class Speech(unittest.TestCase):
    def test_list_is_empty_so_that_each_road_is_named(self):
        self.fail("name the test to run")

    def orcaSaysWhatATeacherNeeds(self):
        with Desktop(movable_clock=True) as desktop, ScreenReader(desktop) as reader:
            self.desktop, self.reader = desktop, reader
            self.expected, self.walked = iter(expected_steps()), []
            self.start = int(desktop.now()) + 3000
            desktop.write_settings("hasCompletedWelcome=true")
            desktop.write_system_calendar(event("Zoom - Anna", self.start, self.start + 1800))
            self.program = desktop.start_quillet()
            self.program.wait_for('student="Anna"')
            self.walk_the_panel()
            self.add_and_remove_a_lesson()
            self.change_every_setting()
            self.walk_the_help()
            self.meet_a_banner()
            self.assertEqual(list(self.expected), [], "steps that were not walked")
            self.assertEqual(self.program.quit(), 0)

    def step(self, name, action=lambda: None):
        """Does the next step and compares what is said after it. A surplus utterance fails the step that follows."""
        expected_name, expected = next(self.expected, ("the end", []))
        self.assertEqual(name, expected_name)
        action()
        said = self.reader.hear(len(expected))
        self.walked += [name, *(f"    {text}" for text in said)]
        # The order of an announcement and a change of focus in one step depends on the screen reader's load.
        if sorted(said) != sorted(expected):
            print("\n".join([*self.walked, *(f"    {text}" for text in self.reader.rest())]), flush=True)
        self.assertEqual(sorted(said), sorted(expected), name)

    def press(self, *keys):
        for key in keys:
            self.step(key, lambda key=key: self.desktop.run("xdotool", "key", key))

    def focus(self, name):
        self.step(f"focus: {name}", lambda: self.program.focus(name))

    def open_panel(self):
        self.step("a click on the bell", self.program.open_panel)

    def walk_the_panel(self):
        self.open_panel()
        self.press("Tab", "Tab", "Tab", "Tab", "Tab", "Tab", "Tab")
        self.focus("Settings")

    def add_and_remove_a_lesson(self):
        self.press("Return", "Tab")
        self.step("typed: Cem", lambda: self.desktop.run("xdotool", "type", "Cem"))
        self.press("Tab", "Down", "Tab")
        self.focus("Add Manual Lesson")
        self.press("shift+Tab", "Down", "Tab", "space", "Tab", "space")

    def change_every_setting(self):
        self.press("Tab", "space", "Tab", "space", "Tab", "Down", "Tab", "Up", "ctrl+w")

    def walk_the_help(self):
        self.open_panel()
        self.focus("User Manual")
        self.press("Return", "Down", "Down", "Down", "Tab")

    def meet_a_banner(self):
        """The help still has the keyboard focus."""
        def wait():
            self.desktop.skip_to(self.start - 240)
            self.program.wait_for_banner()
        self.step("a banner", wait)


if __name__ == "__main__":
    unittest.main(verbosity=2)
