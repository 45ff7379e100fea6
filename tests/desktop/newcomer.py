#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""The sample day of scripts/run: it shows every banner and leaves nothing behind. CTest runs each test separately:

    newcomer.py Newcomer.theSampleDayShowsEveryBanner
"""
import pathlib
import signal
import subprocess
import tempfile
import unittest

from quillet_desktop import PREFIX, SOURCE, poll

VIRTUAL_DESKTOP = str(SOURCE / "scripts/virtual-desktop")
SAMPLE_DAY = str(SOURCE / "scripts/show-sample-day")

# A program that logs four banners but shows only a green and a blue window: the blue one stays for the last three.
STAYING_BANNER = r"""#!/bin/bash
pictures=$(dirname "$0")
banner() {
    for message in "notification actually fires state=$1 message=\"a message\"" \
        "popup shown screenFrame=(0.0, 0.0, 1440.0, 900.0) windowFrame=(245.0, 301.5, 950.0, 266.0)"; do
        echo "$(date -u +%FT%T.%3NZ) $message" >>"$XDG_STATE_HOME/Logs/Quillet/quillet-debug.log"
    done
}
show() { display -immutable -geometry 1000x280+220+310 "xc:$1[1000x280!]" & }
until_true() { until "$@"; do sleep 0.1; done; }

show 'rgb(71,184,107)'
banner wrapUp
until_true test -e "$pictures/1-wrapUp.png"
until_true test "$QUILLET_DESKTOP/screen.ppm" -nt "$pictures/1-wrapUp.png"
sleep 5 # that look was for the blue, and takes a moment
kill $!
show 'rgb(66,138,240)'
banner prepare
until_true test -e "$pictures/2-prepare.png"
sleep 3 # as long as a gap could be
banner oneMinuteWarning
sleep 3
banner joinPlatform
sleep 1
kill $!
"""


def left_of(room):
    """The command lines of the processes that still belong to the virtual desktop in that folder."""
    mark = f"QUILLET_DESKTOP={room}".encode()
    left = []
    for entry in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            if mark in (entry / "environ").read_bytes().split(b"\0"):
                left.append((entry / "cmdline").read_bytes())
        except OSError:
            continue
    return left


def runs(room):
    """Whether Quillet itself runs on that desktop."""
    return any(str(PREFIX / "bin/quillet").encode() in line.split(b"\0")[:2] and b"show-sample-day" not in line
               for line in left_of(room))


class Newcomer(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def start(self, program):
        """Starts the sample day as scripts/run does, in its own process group, as a terminal would."""
        room_file = self.folder / "room"
        process = subprocess.Popen(
            [VIRTUAL_DESKTOP, "--prefix", str(PREFIX), "--room-file", str(room_file), SAMPLE_DAY, program,
             str(self.folder)],
            start_new_session=True, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
            text=True, preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL))
        self.addCleanup(process.stdout.close)
        poll("the virtual desktop", room_file.exists, 60)
        return process, room_file.read_text().strip()

    def theSampleDayShowsEveryBanner(self):
        process, room = self.start(str(PREFIX / "bin/quillet"))
        output = process.communicate()[0]
        self.assertEqual(process.returncode, 0, output)
        self.assertEqual(sorted(path.name for path in self.folder.glob("*.png")),
                         ["1-wrapUp.png", "2-prepare.png", "3-oneMinuteWarning.png", "4-joinPlatform.png",
                          "5-startNow.png"])
        for text in ("Finish up Ben", "4 min before next lesson", "1 minute before next lesson", "Join Zoom now",
                     "START NOW"):
            self.assertRegex(output, rf"(?m)^\d\d:\d\d:\d\d  {text}")
        self.assertIn(f"The pictures are in {self.folder}", output)
        self.assertEqual(left_of(room), [])
        self.assertFalse(pathlib.Path(room).exists())

    def theSampleDayNamesEachMissingBanner(self):
        process, room = self.start("/bin/true")
        output = process.communicate()[0]
        self.assertNotEqual(process.returncode, 0)
        for state in ("wrapUp", "prepare", "oneMinuteWarning", "joinPlatform", "startNow"):
            self.assertRegex(output, rf"the banner {state}, due at \d\d:\d\d:\d\d, did not appear")
        self.assertEqual(left_of(room), [])

    def aStaleBannerFailsTheSampleDay(self):
        fake = self.folder / "quillet"
        fake.write_text(STAYING_BANNER)
        fake.chmod(0o700)
        process, room = self.start(str(fake))
        output = process.communicate()[0]
        self.assertNotEqual(process.returncode, 0)
        for state in ("oneMinuteWarning", "joinPlatform"):
            self.assertIn(f"{state} was logged as shown while an earlier banner of its colour was on the screen",
                          output)
        self.assertEqual(sorted(path.name for path in self.folder.glob("*.png")), ["1-wrapUp.png", "2-prepare.png"])
        self.assertEqual(left_of(room), [])

    def interruptingEndsEveryStartedProcess(self):
        process, room = self.start(str(PREFIX / "bin/quillet"))
        poll("Quillet", lambda: runs(room), 20)
        process.send_signal(signal.SIGINT)
        process.wait(20)
        self.assertEqual(left_of(room), [])
        self.assertFalse(pathlib.Path(room).exists())

    def theNextRunEndsWhatAKilledDesktopLeft(self):
        process, room = self.start(str(PREFIX / "bin/quillet"))
        poll("Quillet", lambda: runs(room), 20)
        process.kill()
        process.wait()
        self.assertNotEqual(left_of(room), [])
        subprocess.run([VIRTUAL_DESKTOP, "--end-left"], check=True, timeout=60)
        self.assertEqual(left_of(room), [])
        self.assertFalse(pathlib.Path(room).exists())


if __name__ == "__main__":
    unittest.main(verbosity=2)
