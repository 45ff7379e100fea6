# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Orca, a screen reader, on a virtual desktop: what it says, as text."""
import contextlib
import re
import subprocess

from waiting import poll

# Orca reads this when it starts. It makes no sound, does not echo keys, and writes every utterance at once: its debug
# log stays in a buffer until later text fills it. Orca 43 speaks through a logger of its own, Orca 48 does not.
CUSTOMIZATIONS = """
import logging
import orca.settings
import orca.speech
orca.settings.enableKeyEcho = False
orca.settings.speechServerFactory = "none"
orca.settings.speechFactoryModules = []
spoken = logging.getLogger("speech")
spoken.setLevel(logging.INFO)
spoken.addHandler(logging.FileHandler({log!r}, encoding="utf-8"))
if not hasattr(orca.speech, "log"):
    def report(text, *rest):
        spoken.info("SPEECH OUTPUT: '" + text + "'")
    orca.speech._speak = report
"""
SPOKEN = re.compile(r"^SPEECH OUTPUT: '(.*)'(?: voice=\w+)?$", re.MULTILINE)
# A date with its time of day, which differs from run to run.
MOMENT = re.compile(r"\b(?:\w{3} )?\d{1,2} \w{3} \d{4} \d\d:\d\d")


class ScreenReader(contextlib.AbstractContextManager):
    """Start it before the program that it reads, so that it learns of all windows."""

    def __init__(self, desktop):
        self.log = desktop.room / "logs/speech"
        folder = desktop.data / "orca"
        folder.mkdir(parents=True)
        (folder / "orca-customizations.py").write_text(CUSTOMIZATIONS.format(log=str(self.log)))
        # Without libfaketime, as all Python programs on a desktop.
        environment = {name: value for name, value in desktop.environment.items() if name != "LD_PRELOAD"}
        with (desktop.room / "logs/orca").open("ab") as output:
            self.process = subprocess.Popen(["orca"], env=environment, stdin=subprocess.DEVNULL, stdout=output,
                                            stderr=output)
        poll("the screen reader", lambda: "Screen reader on." in self.said(), 60)
        self.heard = len(self.said())  # how many utterances the test has dealt with

    def __exit__(self, kind, problem, trace):
        self.process.terminate()
        try:
            self.process.wait(10)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()

    def said(self):
        """All utterances so far, in order."""
        if self.process.poll() is not None:
            raise AssertionError(f"the screen reader has ended with status {self.process.returncode}")
        try:
            spoken = [text.strip() for text in SPOKEN.findall(self.log.read_text())]
        except FileNotFoundError:
            return []
        # The window manager's own windows have no name, and may come at any time.
        return [MOMENT.sub("MOMENT", text) for text in spoken if text != "window."]

    def hear(self, number, seconds=30):
        """Waits for that many more utterances and returns them, or those that came in time."""
        with contextlib.suppress(AssertionError):
            poll("the screen reader", lambda: len(self.said()) >= self.heard + number, seconds)
        heard = self.said()[self.heard:self.heard + number]
        self.heard += len(heard)
        return heard

    def rest(self):
        """The utterances that the test has not waited for."""
        return self.said()[self.heard:]
