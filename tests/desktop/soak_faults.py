# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""The faults that scripts/soak injects at random, each with a function that undoes it."""
import os
import pathlib
import signal
import subprocess

from backups import AGENT_PROGRAM
from events import calendar, event
from waiting import poll

HERE = pathlib.Path(__file__).resolve().parent
FACTORY, REGISTRY = "evolution-calendar-factory", "evolution-source-registry"


def end(pids, number=signal.SIGKILL):
    for pid in pids:
        try:
            os.kill(pid, number)
        except ProcessLookupError:
            pass


def hostile_files(now):
    """Calendar files, each malformed or excessive in a different way."""
    lesson = event("Zoom - Nobody", now + 86400 * 40, now + 86400 * 40 + 1500)
    return [calendar(event("Zoom every second", 0, 1, extra=["RRULE:FREQ=SECONDLY"])),
            calendar(lesson)[:-40],
            "\x00\x1b]0;title\x07" * 20_000,
            calendar(event("Zoom " + "x" * 1_000_000, now - 86400 * 9, now - 86400 * 9 + 60, uid="long-title")),
            calendar(*[event(f"Zoom rules {number}", 0, 1, extra=["RRULE:FREQ=HOURLY"] * 300) for number in range(2)])]


class Faults:
    """Each fault returns a function that undoes it, or None. Processes started here end with the desktop."""

    def __init__(self, desktop, chance):
        self.desktop, self.chance = desktop, chance
        self.kinds = [self.calendars_killed, self.registry_killed, self.calendars_stalled, self.panel_restarted,
                      self.panel_stalled, self.sound_restarted, self.sound_stalled, self.hostile_file, self.flood,
                      self.stalled_peer]

    # --- the calendar service

    def calendars_killed(self):
        end(self.desktop.processes(FACTORY))

    def registry_killed(self):
        end(self.desktop.processes(REGISTRY))

    def calendars_stalled(self):
        pids = self.desktop.processes(FACTORY)
        end(pids, signal.SIGSTOP)
        return lambda: end(pids, signal.SIGCONT)

    # --- panel and sound

    def panel_restarted(self):
        end([self.desktop.pid_of("panel")])
        return lambda: self.start("panel", "xfce4-panel", "--disable-wm-check")

    def panel_stalled(self):
        return self.stall("panel")

    def sound_restarted(self):
        end([self.desktop.pid_of("sound")])
        return lambda: self.start(
            "sound", "pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
            "--disallow-module-loading", "--realtime=no", "--high-priority=no", "-L", "module-native-protocol-unix",
            "-L", "module-null-sink sink_name=silent")

    def sound_stalled(self):
        return self.stall("sound")

    def stall(self, part):
        pid = self.desktop.pid_of(part)
        end([pid], signal.SIGSTOP)
        return lambda: end([pid], signal.SIGCONT)

    def start(self, part, *command):
        with (self.desktop.room / "logs" / part).open("ab") as output:
            process = self.desktop.popen(*command, stdout=output, stderr=output, start_new_session=True)
        (self.desktop.room / "pids" / part).write_text(f"{process.pid}\n")

    # --- files

    def hostile_file(self):
        text = self.chance.choice(hostile_files(self.desktop.now()))
        path = self.desktop.write_folder_calendar("hostile.ics", text)
        return lambda: path.unlink(missing_ok=True)

    # --- peers on the bus

    def flood(self):
        """A peer that sends the same requests thousands of times."""
        return self.peer(stalls=False)

    def stalled_peer(self):
        """A flooding peer that reads no answers for a while."""
        return self.peer(stalls=True)

    def peer(self, stalls):
        name = next((item.partition("/")[0] for item in self.items()), None)
        if name is None:
            return None
        with (self.desktop.room / "logs/flood").open("ab") as output:
            peer = self.desktop.popen("/usr/bin/python3", str(HERE / "flood.py"), name, stdout=output, stderr=output)
        if stalls:
            poll("the peer's connection", lambda: peer.poll() is not None or self.is_connected(peer.pid), 20, 0.01)
            end([peer.pid], signal.SIGSTOP)

        def over():
            peer.kill()
            peer.wait()
        return over

    @staticmethod
    def is_connected(pid):
        try:
            return any("socket:" in os.readlink(entry) for entry in pathlib.Path(f"/proc/{pid}/fd").iterdir())
        except FileNotFoundError:
            return False  # a file was closed, or the peer has ended, meanwhile

    def items(self):
        try:
            return self.desktop.status_items()
        except (AssertionError, subprocess.TimeoutExpired):
            return []  # no panel runs at the moment, or it does not answer

    # --- Quillet itself

    def program_killed(self):
        end(self.desktop.processes("quillet"))

    def agent_killed(self):
        end(self.desktop.processes(AGENT_PROGRAM))
