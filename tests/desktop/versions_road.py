#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Upgrade and downgrade between two versions of Quillet, installed in QUILLET_TEST_OLD and QUILLET_TEST_PREFIX: each
reads what the other wrote, and each version's agent serves the other's program. Called by scripts/try-versions."""
import math
import os
import pathlib
import signal
import unittest

from backups import AGENT_PROGRAM, BackupDesktop, identifiers
from quillet_desktop import PREFIX, calendar, event, poll

OLD = pathlib.Path(os.environ["QUILLET_TEST_OLD"])
LOADED = "^scheduled system backup notifications lessons="
MANUAL = '[{\\"durationMinutes\\":30,\\"id\\":\\"0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0\\",' \
         '\\"platform\\":\\"Zoom\\",\\"startTime\\":%d,\\"studentName\\":\\"Zoe\\"}]'


class Versions(unittest.TestCase):
    def install_agent(self, desktop, prefix):
        """From now on the bus starts that agent; a running agent keeps running."""
        (desktop.room / "services/notification-agent.service").write_text(
            f'[D-BUS Service]\nName=com.ordwinsoftware.Quillet.NotificationAgent\n'
            f'Exec="{prefix}/libexec/quillet-notification-agent"\n')
        desktop.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.ReloadConfig")

    def agent_of(self, desktop):
        """The prefix of the running agent."""
        (agent,) = desktop.processes(AGENT_PROGRAM)
        return pathlib.Path(os.readlink(f"/proc/{agent}/exe")).parent.parent

    def end_agent(self, desktop):
        for agent in desktop.processes(AGENT_PROGRAM):
            os.kill(agent, signal.SIGTERM)
        poll("the agent's end", lambda: desktop.processes(AGENT_PROGRAM) == [])

    def settings(self, desktop):
        """The lines of the settings file, sorted: earlier versions wrote them in sorted order."""
        return sorted((desktop.config / "quillet/quillet.ini").read_text().splitlines())

    def walk(self, first, second):
        """Begins a day with the first version and continues it with the second."""
        with BackupDesktop(movable_clock=True) as desktop:
            self.install_agent(desktop, first)
            now = math.ceil(desktop.now())
            anna, ben, zoe = now + 1200, now + 4800, now + 9000
            desktop.write_settings("notificationDuration=9", "hasCompletedWelcome=true",
                                   f'manualLessons="@ByteArray({MANUAL % (zoe - 978307200)})"')
            # One lesson in the calendar service, one in a file.
            desktop.write_system_calendar(event("Zoom - Anna", anna, anna + 1500))
            file = desktop.write_folder_calendar("lessons.ics", calendar(event("Zoom - Ben", ben, ben + 1500)))
            program = desktop.start_quillet(prefix=first)
            program.wait_for(LOADED + "3$", 30)
            expected = sorted(identifiers(anna, "Anna") + identifiers(ben, "Ben") + identifiers(zoe, "Zoe"))
            self.assertEqual(sorted(desktop.pending()), expected)
            self.assertEqual(self.agent_of(desktop), first)
            memory = desktop.room / "state/quillet/calendars"
            poll("what the calendars said", lambda: len(list(memory.glob("*"))) >= 2)
            settings = self.settings(desktop)

            # The second version is installed while agent and program keep running. The program is restarted first.
            self.install_agent(desktop, second)
            self.assertEqual(program.quit(), 0)
            program.log.unlink()
            self.assertEqual(self.agent_of(desktop), first)
            # Neither the file nor the service yields events any more.
            file.write_text(file.read_text()[:-60])
            for part in ("evolution-calendar-factory", "evolution-source-registry"):
                for pid in desktop.processes(part):
                    os.kill(pid, signal.SIGSTOP)
            program = desktop.start_quillet(prefix=second)
            program.wait_for(LOADED + "3$", 60)
            self.assertEqual(self.agent_of(desktop), first)
            self.assertEqual(sorted(desktop.pending()), expected)
            self.assertEqual(self.settings(desktop), settings)

            # Then the agent ends; the next call starts the other version's.
            self.end_agent(desktop)
            self.assertEqual(sorted(desktop.pending()), expected)
            self.assertEqual(self.agent_of(desktop), second)

            # The day goes on.
            desktop.skip_to(anna - 240)
            self.assertEqual(program.wait_for_banner().state, "prepare")
            self.assertEqual(program.quit(), 0)
            queue = (desktop.room / "state/quillet/pending-notifications").read_text(errors="replace")
            self.assertEqual([queue.count(name) for name in expected], [1] * len(expected))

    def theNewVersionContinuesTheOldOnesDay(self):
        self.walk(OLD, PREFIX)

    def theOldVersionContinuesTheNewOnesDay(self):
        self.walk(PREFIX, OLD)

    def deliver(self, program_prefix, agent_prefix):
        """One version's program shows the banner, the other version's agent the backup."""
        with BackupDesktop(calendar_service=False) as desktop:
            self.install_agent(desktop, agent_prefix)
            start = math.ceil(desktop.now()) + 75
            desktop.write_lessons(event("Zoom - Anna", start, start + 1500))
            program = desktop.start_quillet(prefix=program_prefix)
            program.wait_for(LOADED + "1$", 30)
            self.assertEqual(self.agent_of(desktop), agent_prefix)
            banner = program.wait_for_banner(2, 80)
            self.assertEqual(banner.state, "oneMinuteWarning")
            (backup,) = poll("the backup", desktop.notifications, 3)
            self.assertEqual(backup.title, "Quillet: 1 minute")
            self.assertLess(backup.time, start - 60 + 1)
            self.assertEqual(sorted(desktop.pending()), sorted(identifiers(start, "Anna")[2:]))
            self.assertEqual(program.quit(), 0)

    def anOldAgentServesTheNewProgram(self):
        self.deliver(PREFIX, OLD)

    def aNewAgentServesTheOldProgram(self):
        self.deliver(OLD, PREFIX)


if __name__ == "__main__":
    unittest.main(verbosity=2)
