# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""The results of a walk, written to a file after each step."""
import contextlib
import json
import re
import time
import traceback

RIGHT, WRONG, LOOK, UNSEEN = "right", "wrong", "to be looked at", "not seen"


class NotSeen(Exception):
    """This desktop lacks it, or cannot do it in a headless root."""


class ToolFailed(Exception):
    """A tool of the walk failed; this says nothing about Quillet."""


class Step:
    def __init__(self, report, name):
        self.report, self.name = report, name
        self.result, self.notes, self.pictures = RIGHT, [], []

    def note(self, text):
        self.notes.append(text)

    def look(self, text):
        """Asks a person to look at the pictures."""
        self.result = WRONG if self.result == WRONG else LOOK
        self.notes.append(f"To be looked at: {text}")

    def wrong(self, text):
        self.result = WRONG
        self.notes.append(text)

    def picture(self, image, what):
        name = f"{self.report.prefix}{len(self.report.steps) + 1:02}-{len(self.pictures) + 1}-" \
            + re.sub(r"[^a-z0-9]+", "-", f"{self.name} {what}".lower()).strip("-") + ".png"
        image.convert("RGB").save(self.report.folder / name)
        self.pictures.append([name, what])


class Report:
    def __init__(self, folder, head):
        self.folder, self.head, self.steps, self.prefix = folder, head, [], ""
        self.began = time.monotonic()

    @contextlib.contextmanager
    def step(self, session, name):
        """Runs one step. A failure ends the step, not the walk."""
        step, began = Step(self, name), time.monotonic()
        try:
            yield step
        except NotSeen as reason:
            step.result = UNSEEN
            step.note(str(reason))
        except Exception as problem:  # a failed tool leaves the step unseen
            failed = isinstance(problem, AssertionError)
            step.result = WRONG if failed else UNSEEN
            step.note(str(problem) if failed else f"The walk failed: {problem!r}"[:600])
            with (self.folder / "problems.log").open("a") as problems:
                problems.write(f"--- {name}\n{traceback.format_exc()}")
                problems.writelines(f"{line!r}\n" for program in session.programs for line in program.lines()[-40:])
            with contextlib.suppress(Exception):
                step.picture(session.shot(), "when it failed")
        self.steps.append({"name": name, "result": step.result, "notes": step.notes, "pictures": step.pictures,
                           "seconds": round(time.monotonic() - began, 1)})
        print(f"  {name}: {step.result}. {' '.join(step.notes)}", flush=True)
        self.write()
        with contextlib.suppress(Exception):
            session.settle()

    def write(self):
        new = self.folder / "results.new"
        new.write_text(json.dumps({**self.head, "seconds": round(time.monotonic() - self.began), "steps": self.steps},
                                  indent=1))
        new.replace(self.folder / "results.json")
