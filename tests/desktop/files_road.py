#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""The files of Quillet and its agent: what happens if something else is in their place, and who can read them.

    files_road.py Files.aDeviceLinkInPlaceOfEveryFileDelaysNothing
    files_road.py Files.aFolderInPlaceOfEveryFileDelaysNothing
    files_road.py Files.aPipeInPlaceOfEveryFileDelaysNothing
    files_road.py Files.aSocketInPlaceOfEveryFileDelaysNothing
    files_road.py Files.onlyTheUserCanReadStudentNames
"""
import json
import os
import pathlib
import socket
import stat
import time
import unittest

from quillet_desktop import Desktop, calendar, event, poll

NAME = "Philippa"


def make_socket(path):
    # The full path may be too long for a socket's address.
    here = os.open(".", os.O_RDONLY)
    os.chdir(path.parent)
    with socket.socket(socket.AF_UNIX) as made:
        made.bind(path.name)
    os.fchdir(here)
    os.close(here)


def everything_in(room):
    for folder, folders, files in os.walk(room):
        for name in [*folders, *files]:
            yield pathlib.Path(folder) / name


class Files(unittest.TestCase):
    def aPipeInPlaceOfEveryFileDelaysNothing(self):
        self.walk_with(os.mkfifo, stat.S_IFIFO)

    def aSocketInPlaceOfEveryFileDelaysNothing(self):
        self.walk_with(make_socket, stat.S_IFSOCK)

    def aFolderInPlaceOfEveryFileDelaysNothing(self):
        self.walk_with(os.mkdir, stat.S_IFDIR)

    def aDeviceLinkInPlaceOfEveryFileDelaysNothing(self):
        # Only root can create a device; a link to one needs no privilege.
        self.walk_with(lambda path: path.symlink_to(os.devnull), stat.S_IFLNK)

    def walk_with(self, make, kind):
        with Desktop(calendar_service=False, movable_clock=True) as desktop:
            state = desktop.room / "state"
            # A first run shows where the calendar's memory file is.
            start = desktop.now() + 600
            lessons = calendar(event(f"Zoom - {NAME}", start, start + 1500))
            desktop.write_folder_calendar("lessons.ics", lessons)
            program = desktop.start_quillet()
            program.wait_for("^scheduled system backup notifications lessons=1$")
            memory = poll("the calendar's memory", lambda: list((state / "quillet/calendars").glob("*.memory")))[0]
            self.assertEqual(program.quit(), 0)
            poll("the agent's entry", lambda: list(desktop.config.glob("autostart/*Agent.desktop")))
            (agent,) = desktop.processes("quillet-notification-agent")
            os.kill(agent, 9)
            poll("the agent's end", lambda: not desktop.processes("quillet-notification-agent"))

            places = [state / "Logs/Quillet/quillet-debug.log", state / "Logs/Quillet/quillet-notification-agent.log",
                      desktop.config / "quillet/quillet.ini", desktop.config / "quillet/quillet.ini.lock",
                      state / "quillet/pending-notifications", memory,
                      *desktop.config.glob("autostart/*uillet*.desktop")]
            self.assertEqual(len(places), 8)
            for place in places:
                place.unlink(missing_ok=True)
                make(place)
            started = time.monotonic()
            program = desktop.start_quillet()
            # There is no log any more; the bell shows that the lesson is loaded.
            poll("the lesson in the bell", lambda: desktop.status_items() and NAME in desktop.status_title(), 10)
            self.assertLess(time.monotonic() - started, 10)
            desktop.skip_to(start - 60)
            poll("the banner", lambda: any(NAME in text for text in program.accessible_texts()), 15)
            for place in places:
                self.assertEqual(stat.S_IFMT(place.lstat().st_mode), kind, place)
            output = program.output.read_text()
            self.assertEqual(output.count("quillet-debug.log cannot be written: it is "), 1)
            self.assertEqual(program.quit(), 0)

    def onlyTheUserCanReadStudentNames(self):
        before = os.umask(0)
        try:
            with Desktop(calendar_service=False, movable_clock=True) as desktop:
                self.walk_with_open_files(desktop)
        finally:
            os.umask(before)

    def walk_with_open_files(self, desktop):
        # Files as an earlier version or a careless user may leave them.
        entry = [{"id": "5B3D1D4A-6AA0-4A3A-9BB6-3A3F9A3C7B11", "studentName": NAME, "platform": "Zoom",
                  "startTime": desktop.now() + 7200 - 978307200, "durationMinutes": 25}]
        data = json.dumps(entry).replace('"', '\\"')
        desktop.write_settings(f'manualLessons="@ByteArray({data})"')
        log = desktop.room / "state/Logs/Quillet/quillet-debug.log"
        log.parent.mkdir(parents=True)
        log.write_text(f"2026-01-01T00:00:00.000Z calendar lesson student=\"{NAME}\"\n")
        (desktop.config / "quillet/quillet.ini.QxYzAb").write_text(f"[General]\nname={NAME}\n")
        open_files = [desktop.config / "quillet/quillet.ini", log]
        for path in open_files:
            path.chmod(0o644)
            path.parent.chmod(0o755)
        start = desktop.now() + 600
        source = desktop.write_folder_calendar("lessons.ics", calendar(event(f"Zoom - {NAME}", start, start + 1500)))

        program = desktop.start_quillet()
        program.wait_for("^scheduled system backup notifications lessons=2$")
        poll("the calendar's memory", lambda: list(desktop.room.glob("state/quillet/calendars/*.memory")))
        desktop.skip_to(start - 60)
        program.wait_for_banner()
        # Programs that it starts, such as a PDF viewer, inherit the user's own umask.
        status = pathlib.Path(f"/proc/{program.process.pid}/status").read_text()
        self.assertIn("Umask:\t0000\n", status)
        self.assertEqual(program.quit(), 0)

        made = [path for path in everything_in(desktop.room) if path.is_file() and path != source and
                desktop.room / "logs" not in path.parents]
        named = [path for path in made if NAME.encode() in path.read_bytes()]
        print("files with the name:", *sorted(path.relative_to(desktop.room) for path in named), sep="\n  ", flush=True)
        self.assertTrue({*open_files, desktop.room / "state/quillet/pending-notifications"} <= set(named))
        for path in named:
            self.assertEqual(oct(path.stat().st_mode & 0o777), oct(0o600), path)
            self.assertEqual(oct(path.parent.stat().st_mode & 0o777), oct(0o700), path)
        # No temporary copy remains.
        self.assertEqual(sorted(path.name for path in desktop.config.glob("quillet/*")), ["quillet.ini"])


if __name__ == "__main__":
    unittest.main(verbosity=2)
