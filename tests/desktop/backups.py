#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Backup notifications: Quillet hands them to the agent, and the desktop's notification daemon shows each of them once,
on time and never early, even after Quillet has died.

    backups.py Backups.backupsLeadThroughTheLessonsOfAKilledQuillet
    backups.py Backups.aHangingNotificationDaemonDelaysNeitherBannersNorQuitting
    backups.py Backups.aRunningQuilletRaisesItsBannerAndTheBackupComesOnce
    backups.py Backups.aHangingAgentDelaysNoBanner
    backups.py Backups.backupsFollowTheCalendar
    backups.py Backups.withoutANotificationDaemonBannersStillAppear
"""
import ast
import math
import os
import re
import signal
import unittest

from quillet_desktop import Desktop, calendar, event, poll, report_lateness

AGENT = "com.ordwinsoftware.Quillet.NotificationAgent"
AGENT_PROGRAM = "quillet-notification-agent"


def identifier(kind, start, student):
    return f"quillet.backup.{kind}.{start}.{student}"


def identifiers(start, student):
    return [identifier(kind, start, student) for kind in ("prepare", "one-minute", "join", "start", "finish")]


class Notification:
    """One notification as the bus carried it to the daemon; `time` in seconds since 1970."""

    def __init__(self, moment, strings):
        # The program's name, its icon, the title, the body.
        self.time, self.program, (self.title, self.body) = moment, strings[0], strings[2:4]


class BackupDesktop(Desktop):
    """A virtual desktop with a monitor on its bus."""

    def __init__(self, without=(), **options):
        # Nothing restarts a killed Quillet here, so that only the backups are tested.
        super().__init__(without=["return", *without], **options)

    def __enter__(self):
        # The monitor's output grows with each call; it is always read from the beginning.
        self.calls = self.room / "logs" / "notify-calls"
        with self.calls.open("wb") as output:
            self.listener = self.popen("dbus-monitor", "--session",
                                       "type='method_call',interface='org.freedesktop.Notifications',member='Notify'",
                                       stdout=output)
        poll("the listener on the bus", lambda: b"NameAcquired" in self.calls.read_bytes())
        return self

    def __exit__(self, kind, problem, trace):
        self.listener.terminate()
        self.listener.wait()
        super().__exit__(kind, problem, trace)

    def write_lessons(self, *events):
        """Replaces the calendar file; the next reload reads it."""
        self.write_folder_calendar("lessons.ics", calendar(*events))

    def notifications(self):
        found = []
        for call in re.split(r"^(?=\w)", self.calls.read_text(errors="replace"), flags=re.MULTILINE):
            head = re.match(r"method call time=([0-9.]+) .*member=Notify$", call, flags=re.MULTILINE)
            strings = re.findall(r'^   string "(.*)"$', call, flags=re.MULTILINE)
            # The last argument, the timeout, is there: the call was written completely.
            if head and len(strings) >= 4 and re.search(r"^   int32 ", call, flags=re.MULTILINE):
                found.append(Notification(float(head[1]), strings))
        return found

    def pending(self):
        """The identifiers that the agent holds."""
        answer = self.call(AGENT, "/" + AGENT.replace(".", "/"), f"{AGENT}.PendingRequests")
        return ast.literal_eval(answer.replace("@as ", ""))[0]

    def notification_is_on_the_screen(self):
        """Whether the notification daemon shows a window."""
        tree = self.run("xwininfo", "-root", "-tree")
        windows = re.findall(r'(0x[0-9a-f]+) "[^"]*": \("[Dd]unst" "Dunst"\)', tree)
        return any("IsViewable" in self.run("xwininfo", "-id", window) for window in windows)


class Backups(unittest.TestCase):
    def backupsLeadThroughTheLessonsOfAKilledQuillet(self):
        with BackupDesktop() as desktop:
            # All five kinds come within about a minute: "prepare" from the second lesson, the others from the first.
            zero = math.ceil(desktop.now()) + 12
            anna, ben = zero + 61, zero + 250
            desktop.write_system_calendar(event("Zoom - Anna", anna, anna + 62), event("Zoom - Ben", ben, ben + 1500))
            program = desktop.start_quillet()
            program.wait_for("^scheduled system backup notifications lessons=2$")
            self.assertEqual(sorted(desktop.pending()), sorted(identifiers(anna, "Anna")[1:] + identifiers(ben, "Ben")))
            os.kill(program.process.pid, signal.SIGKILL)
            program.process.wait()
            self.assertLess(desktop.now(), zero, "the machine was too slow for this test")
            expected = [
                (anna - 60, "one-minute", "Quillet: 1 minute", "Anna starts in 1 minute."),
                (ben - 240, "prepare", "Quillet: prepare", "Ben starts in 4 minutes."),
                (anna - 30, "join", "Quillet: join now", "Join Anna now."),
                (anna - 20, "start", "Quillet: START NOW", "Anna starts in 20 seconds."),
                (anna + 2, "finish", "Quillet: finish up", "Finish Anna now."),
            ]
            for number, (due, kind, title, body) in enumerate(expected, 1):
                def shown():
                    self.assertLess(desktop.now(), due + 5, f"{kind} does not come")
                    found = desktop.notifications()
                    return found[number - 1] if len(found) >= number else None
                notification = poll(kind, shown, max(due - desktop.now(), 0) + 6)
                print(f"backup: {kind:10} due {due:.3f}, handed to the daemon {notification.time - due:+.3f} s",
                      flush=True)
                self.assertEqual((notification.program, notification.title, notification.body),
                                 ("Quillet", title, body))
                self.assertGreaterEqual(notification.time, due, "early")
                self.assertLess(notification.time, due + 1)
                poll("the daemon's window", desktop.notification_is_on_the_screen, 4)
                desktop.picture().save(f"backup-{number}-{kind}")
            # None comes twice, and the rest stay pending.
            desktop.wait_until(anna + 6)
            self.assertEqual(len(desktop.notifications()), len(expected))
            self.assertEqual(sorted(desktop.pending()), sorted(identifiers(ben, "Ben")[1:]))
            (agent,) = desktop.processes(AGENT_PROGRAM)
            # The agent ends with its bus.
            os.kill(desktop.pid_of("bus"), signal.SIGKILL)
            poll("the agent's end", lambda: desktop.processes(AGENT_PROGRAM) == [], 10)

    def backupsFollowTheCalendar(self):
        with BackupDesktop(calendar_service=False, movable_clock=True) as desktop:
            start = math.ceil(desktop.now()) + 3600
            desktop.write_lessons(event("Zoom - Anna", start, start + 1500, uid="lesson"))
            program = desktop.start_quillet()
            first = program.wait_for("^scheduled system backup notifications lessons=1$")
            self.assertEqual(sorted(desktop.pending()), sorted(identifiers(start, "Anna")))
            # The lesson moves: the next reload replaces its backups.
            desktop.write_lessons(event("Zoom - Anna", start + 600, start + 2100, uid="lesson"))
            desktop.skip_to(first.time + 60)
            second = program.wait_for("^scheduled system backup notifications lessons=1$", count=2)
            self.assertEqual(sorted(desktop.pending()), sorted(identifiers(start + 600, "Anna")))
            # The lesson is cancelled: the agent ends when it has nothing left to keep.
            desktop.write_lessons()
            desktop.skip_to(second.time + 60)
            program.wait_for("^scheduled system backup notifications lessons=0$")
            poll("the agent's end", lambda: desktop.processes(AGENT_PROGRAM) == [], 60, 0.5)
            self.assertEqual(desktop.notifications(), [])
            self.assertEqual(program.quit(), 0)

    def aRunningQuilletRaisesItsBannerAndTheBackupComesOnce(self):
        with BackupDesktop() as desktop:
            start = math.ceil(desktop.now()) + 75
            desktop.write_system_calendar(event("Zoom - Anna", start, start + 1500))
            program = desktop.start_quillet()
            prepare = program.wait_for_banner()
            self.assertEqual(prepare.state, "prepare")
            banner = program.wait_for_banner(2, 80)
            report_lateness("banner-and-backup", banner, start - 60)
            self.assertEqual(banner.state, "oneMinuteWarning")
            found = poll("the backup", desktop.notifications, 3)
            print(f"backup: one-minute due {start - 60:.3f}, handed to the daemon "
                  f"{found[0].time - (start - 60):+.3f} s", flush=True)
            self.assertEqual([found[0].title, found[0].body], ["Quillet: 1 minute", "Anna starts in 1 minute."])
            self.assertGreaterEqual(found[0].time, start - 60)
            desktop.wait_until_shown(banner, "banner-and-backup")
            banner = program.wait_for_banner(3, 40)
            self.assertEqual(banner.state, "joinPlatform")
            poll("the next backup", lambda: len(desktop.notifications()) > 1, 3)
            self.assertEqual([one.title for one in desktop.notifications()], ["Quillet: 1 minute", "Quillet: join now"])
            self.assertEqual(program.quit(), 0)

    def withoutANotificationDaemonBannersStillAppear(self):
        with BackupDesktop(without=["notifications"]) as desktop:
            start = math.ceil(desktop.now()) + 100
            desktop.write_system_calendar(event("Zoom - Anna", start, start + 1500))
            program = desktop.start_quillet()
            program.wait_for("^system notification permission was not granted$")
            self.assertEqual(program.wait_for_banner().state, "prepare")
            # The agent runs only to restart Quillet after a crash.
            self.assertEqual(desktop.pending(), [])
            self.assertEqual(program.quit(), 0)

    def aHangingNotificationDaemonDelaysNeitherBannersNorQuitting(self):
        with BackupDesktop() as desktop:
            start = math.ceil(desktop.now()) + 150
            desktop.write_system_calendar(event("Zoom - Anna", start, start + 1500))
            os.kill(desktop.pid_of("notifications"), signal.SIGSTOP)
            program = desktop.start_quillet()
            loaded = program.wait_for("^calendar reload success ")
            banner = program.wait_for_banner()
            self.assertEqual(banner.state, "prepare")
            self.assertLess(banner.fired, loaded.time + 2)
            # Scheduling the backups is still in progress.
            self.assertEqual(program.find("^scheduled system backup notifications "), [])
            self.assertEqual(program.quit(), 0)

    def aHangingAgentDelaysNoBanner(self):
        with BackupDesktop(calendar_service=False, movable_clock=True) as desktop:
            start = math.ceil(desktop.now()) + 3600
            desktop.write_lessons(event("Zoom - Anna", start, start + 1500))
            program = desktop.start_quillet()
            first = program.wait_for("^scheduled system backup notifications lessons=1$")
            (agent,) = desktop.processes(AGENT_PROGRAM)
            os.kill(agent, signal.SIGSTOP)
            # The next reload, a minute later, finds this lesson; scheduling its backups then hangs while the lesson
            # approaches.
            start = math.ceil(first.time + 60) + 65
            desktop.write_lessons(event("Zoom - Ben", start, start + 1500))
            desktop.skip_to(first.time + 60)
            self.assertEqual(program.wait_for_banner().state, "prepare")
            banner = program.wait_for_banner(2)
            report_lateness("hanging-agent", banner, start - 60)
            self.assertEqual(banner.state, "oneMinuteWarning")
            self.assertGreaterEqual(banner.fired, start - 60)
            self.assertLess(banner.fired, start - 60 + 1.2)
            program.wait_for("^system notification scheduling failed error=", 40)
            os.kill(agent, signal.SIGCONT)
            self.assertEqual(program.quit(), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
