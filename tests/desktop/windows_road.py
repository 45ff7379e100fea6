#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""A new user's first minutes in the windows, by screen reader and keyboard.

    windows_road.py Windows.setupLeadsToALessonEnteredByHandAndItsBanners
"""
import pathlib
import shutil
import unittest
import urllib.parse

from quillet_desktop import PREFIX, Desktop, poll

MANUAL = "Quillet-User-Manual.pdf"

# By window title: the panel's button for it, and a text that it shows.
WINDOWS = {
    "Welcome to Quillet": ("Quick Start", "Page 1 of 5"),
    "Quillet Help": ("User Manual", "Open PDF Manual"),
    "About Quillet": ("About Quillet", "Contact Support"),
    "Quillet Settings": ("Settings", "Manual Lesson Entry"),
    "Debug Window": ("Show Debug Window", "Not lessons today"),
}


class Viewer:
    """The desktop's PDF viewer: only records what it was asked to open."""

    def __init__(self, desktop):
        self.record = desktop.room / "opened"
        command = desktop.room / "viewer"
        command.write_text(f"#!/bin/sh\nprintf '%s\\n' \"$@\" >>'{self.record}'\n")
        command.chmod(0o700)
        entry = desktop.data / "applications/viewer.desktop"
        entry.parent.mkdir(parents=True, exist_ok=True)
        entry.write_text(f"[Desktop Entry]\nType=Application\nName=Viewer\nExec={command} %u\n"
                         "MimeType=application/pdf;\n")
        (desktop.config / "mimeapps.list").write_text(
            "[Default Applications]\napplication/pdf=viewer.desktop\n")

    def opened(self):
        """The paths it was asked to open, in order."""
        try:
            asked = self.record.read_text().splitlines()
        except FileNotFoundError:
            return []
        return [pathlib.Path(urllib.parse.unquote(urllib.parse.urlsplit(text).path)) for text in asked]


class Memory:
    """A process's memory in MiB. `pss` also changes when another program that shares its libraries starts or ends;
    `own`, which no file backs, does not."""

    def __init__(self, pid):
        lines = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines()[1:]
        sizes = dict(line.split()[:2] for line in lines)
        self.rss, self.pss, self.own = (int(sizes[key]) / 1024 for key in ("Rss:", "Pss:", "Anonymous:"))

    def __str__(self):
        return f"RSS {self.rss:.1f} MiB, PSS {self.pss:.1f} MiB, its own {self.own:.1f} MiB"


class Windows(unittest.TestCase):
    def test_list_is_empty_so_that_each_road_is_named(self):
        self.fail("name the test to run")

    def wait_for_text(self, program, text, *window):
        poll(f"the text {text!r}", lambda: program.shows(text, *window), 15)

    def finish_setup(self, desktop, program):
        """Goes through the setup, which opens with the panel until it has been finished."""
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
        """Adds a lesson by keyboard: types the time of day and the name, then presses Enter."""
        program.focus("Start")
        # From the day past month and year to the hour; after two digits the cursor moves on to the minute.
        desktop.run("xdotool", "key", "Tab", "Tab", "Tab")
        desktop.run("xdotool", "type", "--delay", "100", f"{desktop.clock.local(start):%H%M}")
        program.focus("Student name")
        desktop.run("xdotool", "type", "--delay", "100", name)
        desktop.run("xdotool", "key", "Return")
        self.wait_for_text(program, name)

    def whole_minute(self, desktop, least_seconds):
        """The first whole minute at least that many seconds away."""
        return (int(desktop.now()) + least_seconds + 59) // 60 * 60

    def setupLeadsToALessonEnteredByHandAndItsBanners(self):
        with Desktop(movable_clock=True) as desktop:
            program = desktop.start_quillet()
            self.finish_setup(desktop, program)
            program.open_panel()
            program.press("Settings")
            self.wait_for_text(program, "Manual Lesson Entry")

            # A lesson that starts within four minutes is announced at once, without waiting for the next reload.
            start = self.whole_minute(desktop, 120)
            loads = len(program.find("^calendar reload success"))
            added = desktop.now()
            self.add_lesson(desktop, program, "Anna", start)
            banner = program.wait_for_banner(1, 5)
            self.assertEqual(banner.state, "prepare")
            self.assertGreater(len(program.find("^calendar reload success")), loads)
            self.assertLess(banner.fired - added, 20)  # typing included
            desktop.wait_until_shown(banner, "windows-center")

            # The next banner follows the new position and duration.
            program.choose("Popup Position", "Top Right")
            program.choose("Notification Duration", "5 seconds")
            self.assertEqual(desktop.setting("notificationPosition"), "topRight")
            self.assertEqual(float(desktop.setting("notificationDuration")), 5.0)
            desktop.skip_to(start - 64)
            following = program.wait_for_banner(2)
            self.assertEqual(following.state, "oneMinuteWarning")
            desktop.wait_until_shown(following, "windows-top-right")
            self.assertGreater(following.left, banner.left)
            self.assertLess(following.top, banner.top)
            desktop.wait_until_gone(following, 7)
            self.assertGreater(desktop.now() - following.shown, 4.5)

            # Once removed, it is not announced again.
            program.press("Remove")
            poll("the row to go", lambda: not program.shows("Remove"))
            self.assertIn("[]", desktop.setting("manualLessons"))
            for moment in (start - 30, start - 20, start):
                desktop.skip_to(moment - 2)
                desktop.wait_until(moment + 3)
            self.assertEqual([banner.state for banner in program.banners()], ["prepare", "oneMinuteWarning"])
            self.assertEqual(program.quit(), 0)

    # --- opening and closing

    def active_title(self, desktop):
        window = desktop.active_window()
        if not window:
            return None
        try:
            return desktop.run("xdotool", "getwindowname", str(window)).strip()
        except AssertionError:
            return None  # it has closed meanwhile

    def open_window(self, desktop, program, title):
        command, text = WINDOWS[title]
        program.open_panel()
        program.press(command)
        # The cheap check first: a screen reader queries each text separately.
        poll(f"{title} to have the keyboard", lambda: self.active_title(desktop) == title)
        self.wait_for_text(program, text, title)

    def close_window(self, desktop, program, title):
        """Closes the active window with Ctrl+W."""
        self.assertEqual(self.active_title(desktop), title)
        desktop.run("xdotool", "key", "ctrl+w")
        poll(f"{title} to close", lambda: not desktop.windows(title))
        self.assertFalse(program.shows(WINDOWS[title][1]))

    def helpCanBeSearchedItsManualOpensAndTheBellOutlivesTheWindows(self):
        with Desktop() as desktop:
            viewer = Viewer(desktop)
            program = desktop.start_quillet()
            self.finish_setup(desktop, program)
            (bell,) = poll("the bell", desktop.status_items)

            self.open_window(desktop, program, "Quillet Help")
            self.assertTrue(program.shows("Version History"))
            desktop.run("xdotool", "key", "ctrl+f")
            desktop.run("xdotool", "type", "--delay", "100", "privacy")
            poll("the topics to be filtered", lambda: not program.shows("Version History"))
            self.assertTrue(program.shows("Installation & Permissions"))
            self.assertFalse(program.shows("First Launch"))
            desktop.click(*program.accessible("where", "Installation & Permissions"))
            self.wait_for_text(program, "First Launch")

            program.press("Open PDF Manual")
            installed = PREFIX / "share/quillet" / MANUAL
            self.assertTrue(installed.is_file())
            poll("the viewer", viewer.opened, 60)
            self.assertEqual([path.resolve() for path in viewer.opened()], [installed.resolve()])

            self.close_window(desktop, program, "Quillet Help")
            for title in ("About Quillet", "Quillet Settings"):
                self.open_window(desktop, program, title)
                self.close_window(desktop, program, title)
            poll("the panel to close", lambda: not program.shows("Quit Quillet"))
            program.check_alive()
            self.assertEqual(desktop.status_items(), [bell])
            self.assertEqual(len(viewer.opened()), 1)
            self.assertEqual(program.quit(), 0)

    def withoutTheManualTheBellSoundsAndNothingOpens(self):
        with Desktop() as desktop:
            viewer = Viewer(desktop)
            prefix = desktop.room / "without-manual"
            shutil.copytree(PREFIX, prefix, symlinks=True, ignore=shutil.ignore_patterns(MANUAL))
            folders = f"{prefix}/share:/usr/local/share:/usr/share"
            program = desktop.start_quillet({"XDG_DATA_DIRS": folders}, prefix=prefix)
            self.finish_setup(desktop, program)
            self.open_window(desktop, program, "Quillet Help")
            heard = desktop.room / "heard"
            with heard.open("w") as output:
                listener = desktop.popen("pactl", "subscribe", stdout=output)
            try:
                # The listener has subscribed once it reports another client.
                def listens():
                    desktop.run("pactl", "info")
                    return heard.read_text()
                poll("the listener", listens)
                self.assertNotIn("sink-input", heard.read_text())
                program.press("Open PDF Manual")
                poll("the bell's sound", lambda: "Event 'new' on sink-input" in heard.read_text())
            finally:
                listener.terminate()
                listener.wait(10)
            self.assertEqual(viewer.opened(), [])
            self.close_window(desktop, program, "Quillet Help")
            self.assertEqual(program.quit(), 0)

    # --- memory

    def openingAndClosingEveryWindowTenTimesFreesTheMemory(self):
        """Compares the memory with that before the first window, and with that after one round, which includes what the
        first windows load and keep intentionally: fonts, the style and the toolkit's caches."""
        with Desktop() as desktop:
            program = desktop.start_quillet()
            program.wait_for("^calendar reload success")

            def settled(what):
                """The memory once two measurements in a row agree within 0.25 MiB."""
                last = [Memory(program.process.pid)]

                def agrees():
                    before, last[0] = last[0], Memory(program.process.pid)
                    return abs(last[0].rss - before.rss) < 0.25 and abs(last[0].own - before.own) < 0.25
                poll("the memory to settle", agrees, 10, 0.5)
                print(f"memory {what}: {last[0]}", flush=True)
                return last[0]

            def open_and_close_all():
                for title in WINDOWS:
                    self.open_window(desktop, program, title)
                    self.close_window(desktop, program, title)

            fresh = settled("before the first window")
            self.finish_setup(desktop, program)
            open_and_close_all()
            once = settled("after each window once")
            for _ in range(10):
                open_and_close_all()
            after = settled("after ten rounds more")
            self.assertLess(after.own - fresh.own, 5.0)
            self.assertLess(after.rss - once.rss, 5.0)
            self.assertLess(after.own - once.own, 5.0)
            self.assertEqual(program.quit(), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
