#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""The agent restarts a Quillet that crashes while lessons remain, but not one that ends in order.

    returns.py Returns.aCrashedQuilletIsRestartedThreeTimes
    returns.py Returns.afterAnOrderlyExitQuilletIsNotRestarted
"""
import math
import os
import resource
import signal
import types
import unittest

from quillet_desktop import Desktop, event, poll, report_lateness


def running(desktop):
    """Quillet's process id; None while it does not run."""
    found = desktop.processes("quillet")
    return found[0] if found else None


def agent_log(desktop):
    log = desktop.room / "state/Logs/Quillet/quillet-notification-agent.log"
    return log.read_text() if log.exists() else ""


class Returns(unittest.TestCase):
    def aCrashedQuilletIsRestartedThreeTimes(self):
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        with Desktop() as desktop:
            start = math.ceil(desktop.now()) + 78
            desktop.write_system_calendar(event("Zoom - Anna", start, start + 1800))
            program = desktop.start_quillet()
            program.wait_for("^scheduled system backup notifications lessons=1$")
            pid = self.crash(desktop, program.process.pid, signal.SIGKILL)
            program.process.wait()
            # The restarted program opens no window by itself.
            poll("the bell", desktop.status_items)
            self.assertEqual(desktop.stacking(types.SimpleNamespace(process=types.SimpleNamespace(pid=pid))), [])
            self.assertLess(desktop.now(), start - 60, "the machine was too slow for this test")
            (banner,) = poll("the one-minute warning",
                             lambda: [banner for banner in program.banners() if banner.state == "oneMinuteWarning"], 30)
            report_lateness("after-a-crash", banner, start - 60)
            self.assertLess(banner.fired, start - 60 + 1.2)
            desktop.wait_until_shown(banner, "after-a-crash")
            for number in (signal.SIGSEGV, signal.SIGKILL):
                pid = self.crash(desktop, pid, number)
            os.kill(pid, signal.SIGSEGV)
            poll("the agent to let it be", lambda: "Quillet is not brought back" in agent_log(desktop), 5)
            self.assertIn("3 times within 600 seconds", agent_log(desktop))
            self.assertIsNone(running(desktop))
            # Started by hand, it works as usual.
            desktop.start_quillet().wait_for("^status item registered$")

    def crash(self, desktop, pid, number):
        """Ends the process with that signal and returns its successor's id. The bell must be back within three seconds:
        two are normal, three allow for a busy machine."""
        os.kill(pid, number)
        died = desktop.now()

        def follower():
            found = running(desktop)
            return found if found != pid else None
        found = poll("its return", follower, 5, 0.02)
        poll("its bell", desktop.status_items, 5, 0.02)
        print(f"after {signal.Signals(number).name}: its bell is back after {desktop.now() - died:.2f} s", flush=True)
        self.assertLess(desktop.now(), died + 3)
        return found

    def afterAnOrderlyExitQuilletIsNotRestarted(self):
        with Desktop() as desktop:
            now = math.ceil(desktop.now())
            desktop.write_system_calendar(event("Zoom - Anna", now + 3000, now + 4800))
            for end in (lambda program: program.quit(), lambda program: program.process.terminate()):
                program = desktop.start_quillet()
                program.wait_for("^scheduled system backup notifications lessons=1$")
                end(program)
                self.assertEqual(program.wait_for_end(), 0)
                ended = desktop.now()
                desktop.wait_until(ended + 2.5)
                self.assertIsNone(running(desktop))
                program.log.unlink()
            self.assertEqual(agent_log(desktop), "")
            # A session that ends takes its display away, while the user's bus stays.
            program = desktop.start_quillet()
            program.wait_for("^scheduled system backup notifications lessons=1$")
            os.kill(desktop.pid_of("display"), signal.SIGTERM)
            self.assertNotEqual(program.wait_for_end(), 0)
            poll("the agent to let it be", lambda: "the session's display is gone" in agent_log(desktop), 5)
            self.assertIsNone(running(desktop))


if __name__ == "__main__":
    unittest.main(verbosity=2)
