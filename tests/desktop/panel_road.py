#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""The bell's panel and the windows of the whole program, by mouse, keyboard and screen reader.

    panel_road.py Panel.aClickOnTheBellOpensThePanelBelowItAndAnotherClosesIt
"""
import os
import pathlib
import signal
import time
import unittest

from program import PANEL
from quillet_desktop import Desktop, event, poll

WINDOWS = [("Quick Start", "Welcome to Quillet"), ("User Manual", "Quillet Help"), ("About Quillet", "About Quillet"),
           ("Settings", "Quillet Settings"), ("Show Debug Window", "Debug Window")]
THICKNESS = 30  # pixels, of the desktop's panel, at the upper edge
NO_PANEL = "^no panel shows the bell"
OVERDUE = 66  # seconds by which Quillet has concluded that no panel shows its bell
OVERDUE_BY_HAND = 15  # the same after a start by hand


def four_lessons(desktop):
    now = int(desktop.now())
    return [event(f"Zoom - {name}", now + 7200 + at * 1800, now + 9000 + at * 1800)
            for at, name in enumerate(("Anna", "Ben", "Cem", "Dora"))]


class Panel(unittest.TestCase):
    def test_list_is_empty_so_that_each_road_is_named(self):
        self.fail("name the test to run")

    # --- steps

    def start(self, desktop, arguments=(), environment=None):
        """Starts the program with the setup already completed."""
        desktop.write_settings("hasCompletedWelcome=true")
        program = desktop.start_quillet(environment, arguments)
        program.wait_for("^calendar reload success")
        return program

    def wait_for_panel(self, desktop):
        return poll("the panel", lambda: desktop.windows(PANEL), 10)[0]

    def wait_until_closed(self, desktop):
        poll("the panel to close", lambda: not desktop.windows(PANEL), 10)

    def end(self, program):
        self.assertEqual(program.quit(), 0)

    # --- the panel

    def aClickOnTheBellOpensThePanelBelowItAndAnotherClosesIt(self):
        with Desktop() as desktop:
            program = self.start(desktop)
            bell = desktop.bell()
            desktop.click(*bell)
            panel = self.wait_for_panel(desktop)
            left, top, width, height = desktop.place(panel)
            self.assertLessEqual(left, bell[0])
            self.assertGreaterEqual(left + width, bell[0])
            self.assertGreaterEqual(top, THICKNESS)
            self.assertLess(top, THICKNESS + 10)
            self.assertLessEqual(left + width, desktop.size[0])
            self.assertLessEqual(top + height, desktop.size[1])
            poll("the panel to have the keyboard", lambda: desktop.active_window() == panel)
            desktop.click(*bell)
            self.wait_until_closed(desktop)
            desktop.click(*bell)
            panel = self.wait_for_panel(desktop)
            poll("the panel to have the keyboard", lambda: desktop.active_window() == panel)
            desktop.run("xdotool", "key", "Escape")
            self.wait_until_closed(desktop)
            self.end(program)

    def aClickOnTheWallpaperOrTheBarClosesThePanel(self):
        with Desktop() as desktop:
            program = self.start(desktop)
            for place in [(300, 700), (200, THICKNESS // 2)]:
                desktop.click(*desktop.bell())
                panel = self.wait_for_panel(desktop)
                poll("the panel to have the keyboard", lambda: desktop.active_window() == panel)
                desktop.click(*place)
                self.wait_until_closed(desktop)
            self.end(program)

    def aRightClickOnTheBellOpensItsMenu(self):
        with Desktop() as desktop:
            program = self.start(desktop)
            bell = desktop.bell()
            before = desktop.picture()
            desktop.run("xdotool", "mousemove", str(bell[0]), str(bell[1]), "click", "3")
            # The menu hangs below the bell, over the wallpaper.
            below = (bell[0], THICKNESS + 20)
            poll("the menu", lambda: desktop.picture().pixel(*below) != before.pixel(*below))
            desktop.picture().save("panel-menu")
            self.assertEqual(desktop.windows(PANEL), [])
            # The first line of it.
            desktop.run("xdotool", "key", "Down", "Return")
            self.wait_for_panel(desktop)
            self.end(program)

    def besideTheOpenWelcomeWindowThePanelHasTheFocus(self):
        with Desktop() as desktop:
            program = desktop.start_quillet()
            program.wait_for("^calendar reload success")
            bell = desktop.bell()
            desktop.click(*bell)
            panel = self.wait_for_panel(desktop)
            (setup,) = poll("the welcome window", lambda: desktop.windows("Welcome to Quillet"))
            poll("the new window to have the keyboard", lambda: desktop.active_window() == setup)
            desktop.click(*bell)
            self.wait_until_closed(desktop)
            poll("the window to have the keyboard again", lambda: desktop.active_window() == setup)
            desktop.click(*bell)
            panel = self.wait_for_panel(desktop)
            # It stays there, also once the other window has come to the front.
            poll("both in front", lambda: desktop.stacking(program)[-2:] == [setup, panel])
            poll("the panel to have the keyboard", lambda: desktop.active_window() == panel)
            desktop.picture().save("panel-beside-welcome")
            desktop.run("xdotool", "key", "Escape")
            self.wait_until_closed(desktop)
            self.assertEqual(desktop.windows("Welcome to Quillet"), [setup])
            self.end(program)

    def aSecondStartOpensThePanel(self):
        with Desktop() as desktop:
            program = self.start(desktop)
            self.assertEqual(desktop.start_quillet().wait_for_end(), 0)
            panel = self.wait_for_panel(desktop)
            poll("the panel to have the keyboard", lambda: desktop.active_window() == panel)
            self.assertEqual(desktop.frame_of(panel), [0, 0, 0, 0])
            left, top, width, _ = desktop.place(panel)
            self.assertGreaterEqual(top, THICKNESS)
            self.assertGreater(left + width, desktop.size[0] - 60)  # at the end with the bell
            # An open panel stays open.
            self.assertEqual(desktop.start_quillet().wait_for_end(), 0)
            program.wait_for("^second start handed over$", count=2)
            self.assertEqual(desktop.windows(PANEL), [panel])
            self.end(program)

    def aScreenReaderCanOperateThePanel(self):
        with Desktop() as desktop:
            desktop.write_system_calendar(*four_lessons(desktop))
            program = self.start(desktop)
            program.wait_for("^calendar reload success lessons=4 ")
            program.open_panel()
            poll("the next lessons", lambda: program.shows("Compact"))
            compact = sum("Dora" in text for text in program.accessible_texts())
            self.assertEqual(compact, 0)
            program.press("All today")
            poll("the last lesson", lambda: any("Dora" in text for text in program.accessible_texts()))
            program.press("Test Notification")
            banner = program.wait_for_banner()
            desktop.wait_until_shown(banner, "panel-test-notification")
            program.open_panel()
            program.press("Quit Quillet")
            self.assertEqual(program.wait_for_end(), 0)

    def withTheGtkThemeAScreenReaderReadsThePanel(self):
        with Desktop() as desktop:
            program = self.start(desktop, environment={"QT_QPA_PLATFORMTHEME": "gtk3"})
            self.assertIn("libqgtk3.so", pathlib.Path(f"/proc/{program.process.pid}/maps").read_text())
            program.open_panel()
            self.assertIn("Test Notification", program.accessible_texts())
            self.end(program)

    def ctrlQQuitsAtOnce(self):
        with Desktop() as desktop:
            program = self.start(desktop)
            program.open_panel()
            panel = self.wait_for_panel(desktop)
            poll("the panel to have the keyboard", lambda: desktop.active_window() == panel)
            desktop.run("xdotool", "key", "ctrl+q")
            self.assertEqual(program.wait_for_end(3), 0)

    # --- without a panel

    def withoutAPanelTheScheduleOpensByItselfOnce(self):
        with Desktop(without=["panel"]) as desktop:
            program = self.start(desktop)
            told = program.wait_for(NO_PANEL, OVERDUE_BY_HAND)
            self.assertGreater(told.time - program.started, 9)
            window = self.wait_for_panel(desktop)
            poll("how to get the bell", lambda: any("system tray" in text for text in program.accessible_texts()))
            desktop.picture().save("panel-without-a-bell")
            self.assertGreater(desktop.frame_of(window)[2], 0)  # an ordinary window with a title bar
            # Nobody asked for it, so the keyboard focus stays where it was.
            self.assertNotEqual(desktop.active_window(), window)
            desktop.run("xdotool", "windowactivate", "--sync", str(window))
            desktop.run("xdotool", "key", "Escape")
            self.wait_until_closed(desktop)
            program.check_alive()
            # From then on, another start of the program opens it.
            self.assertEqual(desktop.start_quillet().wait_for_end(), 0)
            self.wait_for_panel(desktop)
            self.assertEqual(len(program.find(NO_PANEL)), 1)
            self.end(program)

    def losingThePanelLaterOpensNothing(self):
        with Desktop() as desktop:
            program = self.start(desktop)
            program.wait_for("^status item registered")
            desktop.bell()  # the bell is there
            os.kill(desktop.pid_of("panel"), signal.SIGKILL)
            program.wait_for(NO_PANEL, OVERDUE)
            # If anything opened, it would do so at once.
            deadline = time.monotonic() + 2
            poll("two seconds to pass", lambda: desktop.windows(PANEL) or time.monotonic() > deadline)
            self.assertEqual(desktop.windows(PANEL), [])
            self.end(program)

    def withoutAPanelAStartAtLoginOpensNothing(self):
        with Desktop(without=["panel"]) as desktop:
            program = self.start(desktop, ["--login"])
            program.wait_for(NO_PANEL, OVERDUE)
            # If anything opened, it would do so at once.
            deadline = time.monotonic() + 2
            poll("two seconds to pass", lambda: desktop.windows(PANEL) or time.monotonic() > deadline)
            self.assertEqual(desktop.windows(PANEL), [])
            self.assertEqual(desktop.start_quillet().wait_for_end(), 0)
            window = self.wait_for_panel(desktop)
            self.assertGreater(desktop.frame_of(window)[2], 0)
            self.assertEqual(len(program.find(NO_PANEL)), 1)
            self.end(program)

    # --- the windows

    def eachCommandOpensItsWindowOnceAndInFront(self):
        with Desktop() as desktop:
            program = self.start(desktop)
            opened = {}
            for button, title in WINDOWS:
                program.open_panel()
                program.press(button, PANEL)
                (opened[title],) = poll(title, lambda t=title: desktop.windows(t))
                poll(f"{title} to have the keyboard", lambda t=title: desktop.active_window() == opened[t])
                poll("the panel to close", lambda: not desktop.windows(PANEL))
            # Each command again: its window comes to the front from behind the others.
            for button, title in WINDOWS:
                self.assertNotEqual(desktop.active_window(), opened[title])
                program.open_panel()
                program.press(button, PANEL)
                poll(f"{title} to have the keyboard", lambda t=title: desktop.active_window() == opened[t])
                self.assertEqual(desktop.windows(title), [opened[title]])
                self.assertEqual(desktop.stacking(program)[-1], opened[title])
            program.open_panel()
            poll("the panel to be listed", lambda: len(desktop.stacking(program)) == len(WINDOWS) + 1)
            for window in desktop.stacking(program):
                self.assertIn("_NET_WM_STATE_SKIP_TASKBAR", desktop.run("xprop", "-id", str(window), "_NET_WM_STATE"))
            desktop.run("xdotool", "key", "Escape")
            for title, window in opened.items():
                desktop.run("xdotool", "windowactivate", "--sync", str(window), "key", "ctrl+w")
                poll(f"{title} to close", lambda t=title: not desktop.windows(t))
            self.wait_until_closed(desktop)
            program.check_alive()
            self.assertEqual(len(desktop.status_items()), 1)
            # The program still works.
            program.open_panel()
            program.press("About Quillet")
            poll("the window again", lambda: desktop.windows("About Quillet"))
            self.end(program)


if __name__ == "__main__":
    unittest.main(verbosity=2)
