#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Whether scripts/run --remove removes what scripts/run installed, and nothing else.

    removal.py Removal.removingTakesAwayWhatRunInstalledAndNothingElse
"""
import pathlib
import shutil
import unittest

from quillet_desktop import PREFIX, SOURCE, Desktop, event, poll

RUN = str(SOURCE / "scripts/run")


class Removal(unittest.TestCase):
    def test_list_is_empty_so_that_each_road_is_named(self):
        self.fail("name the test to run")

    def install(self, desktop):
        """Installs the program as scripts/run does, with its record; returns the prefix."""
        prefix = pathlib.Path(desktop.environment["HOME"]) / ".local"
        files = []
        for folder, target in (("bin", prefix / "bin"), ("libexec", prefix / "libexec"), ("share", desktop.data)):
            shutil.copytree(PREFIX / folder, target, dirs_exist_ok=True)
            files += [target / path.relative_to(PREFIX / folder) for path in (PREFIX / folder).rglob("*")
                      if not path.is_dir()]
        record = desktop.data / "quillet/installed-files"
        record.write_text("".join(f"{path}\n" for path in [*files, record, "/etc/hostname"]))
        (desktop.room / "services/notification-agent.service").write_text(
            "[D-BUS Service]\nName=com.ordwinsoftware.Quillet.NotificationAgent\n"
            f'Exec="{prefix}/libexec/quillet-notification-agent"\n')
        desktop.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.ReloadConfig")
        return prefix, [*files, record]

    def removingTakesAwayWhatRunInstalledAndNothingElse(self):
        with Desktop(calendar_service=False) as desktop:
            prefix, files = self.install(desktop)
            desktop.write_settings("hasCompletedWelcome=true", "startAtLogin=true")
            start = int(desktop.now()) + 7200
            lessons = desktop.write_folder_calendar(
                "a.ics", f"BEGIN:VCALENDAR\r\n{event('Zoom - Anna', start, start + 1500)}END:VCALENDAR\r\n")
            program = desktop.start_quillet(prefix=prefix)
            program.wait_for("^calendar reload success lessons=1 ")
            poll("the agent", lambda: desktop.processes("quillet-notification-agent"))
            autostart = desktop.config / "autostart"
            poll("both login entries", lambda: len(list(autostart.glob("*.desktop"))) == 2)
            told = desktop.run(RUN, "--remove", seconds=60)
            self.assertEqual(program.wait_for_end(1), 0)
            self.assertEqual(desktop.processes("quillet-notification-agent"), [])
            self.assertEqual(desktop.processes("quillet"), [])
            self.assertEqual([path for path in files if path.exists()], [])
            self.assertEqual(list(autostart.iterdir()), [])
            self.assertEqual([path for path in prefix.rglob("*") if path != prefix / "bin"], [])
            self.assertIn(f"Removed {len(files)} files", told)
            # The teacher's own files.
            self.assertTrue(lessons.exists())
            self.assertEqual(desktop.setting("startAtLogin"), "true")
            self.assertTrue(program.log.exists())
            self.assertTrue(pathlib.Path("/etc/hostname").exists())
            self.assertTrue((PREFIX / "bin/quillet").exists())
            self.assertIn("has installed nothing", desktop.run(RUN, "--remove"))

    def removingLeavesAnInstalledPackageAlone(self):
        with Desktop(calendar_service=False) as desktop:
            self.install(desktop)
            desktop.write_settings("hasCompletedWelcome=true", "startAtLogin=true")
            program = desktop.start_quillet()
            program.wait_for("^calendar reload")
            entry = desktop.config / "autostart/com.ordwinsoftware.Quillet.desktop"
            poll("the login entry", entry.exists)
            desktop.run(RUN, "--remove", seconds=60)
            program.check_alive()
            self.assertIn(str(PREFIX), entry.read_text())
            self.assertEqual(program.quit(), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
