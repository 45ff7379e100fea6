# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""A day of lessons: what is due, computed independently of Quillet, and which of it came. Times are seconds since
1970."""
import dataclasses

from events import event

STEPS = ("prepare", "one-minute", "join", "start", "finish")  # of one lesson, in the order in which they are due


@dataclasses.dataclass(frozen=True)
class Lesson:
    student: str
    platform: str
    start: float
    end: float

    @property
    def join(self):
        return self.start - (60 if self.platform == "Microsoft Teams" else 30)

    def event(self):
        return event(f"{self.platform} - {self.student}", self.start, self.end)


@dataclasses.dataclass(frozen=True)
class Due:
    """A changeover: its banner must appear between `begin` and `end`."""
    state: str
    student: str
    begin: float
    end: float


@dataclasses.dataclass(frozen=True)
class Absence:
    """A time during which a killed program was away."""
    begin: float
    end: float


def changeovers(lessons):
    """The day's changeovers. During a lesson only its own end is announced."""
    found, free = [], 0
    for lesson in lessons:
        start = lesson.start
        before = [("prepare", start - 240, start - 60), ("oneMinuteWarning", start - 60, lesson.join),
                  ("joinPlatform", lesson.join, start - 20)]
        for state, begin, end in before:
            if max(begin, free) < end:
                found.append(Due(state, lesson.student, max(begin, free), end))
        # One banner for both the last call and the start.
        found.append(Due("startNow", lesson.student, max(start - 20, free), start + 5))
        found.append(Due("wrapUp", lesson.student, lesson.end - 60, lesson.end))
        free = lesson.end
    return found


def backups(lessons):
    """When each notification is due, by step and student."""
    return {(step, lesson.student): moment for lesson in lessons for step, moment in
            zip(STEPS, (lesson.start - 240, lesson.start - 60, lesson.join, lesson.start - 20, lesson.end - 60))}


class Count:
    """How much of what was due came. `problems` are faults; the other differences have an accepted reason."""

    def __init__(self):
        self.due = self.came = self.late = self.double = 0
        self.again = 0  # announced once more by a restarted program, since the phase still lasted
        self.missed = 0  # not announced, since the program or agent was away then
        self.latest = 0.0
        self.problems = []

    def note_late(self, name, late, limit):
        self.latest = max(self.latest, late)
        if late > limit:
            self.late += 1
            self.problems.append(f"{name} came {late:.1f} s late")


def count_banners(dues, banners, absences, limit):
    """`banners`: (moment, state, number of the program's run that showed it). `limit`: seconds until late."""
    count, left = Count(), list(banners)
    for due in dues:
        count.due += 1
        name = f"{due.state} of {due.student}"
        found = [banner for banner in left if banner[1] == due.state and due.begin <= banner[0] < due.end]
        left = [banner for banner in left if banner not in found]
        away = [absence for absence in absences if absence.begin < due.end and due.begin < absence.end]
        count.came += bool(found)
        if not found:
            covered = any(absence.begin <= due.begin + limit and due.end - limit <= absence.end for absence in away)
            count.missed += covered
            if not covered:
                count.problems.append(f"{name} is missing")
            continue
        runs = [banner[2] for banner in found]
        double = len(runs) - len(set(runs))
        count.double += double
        count.again += len(set(runs)) - 1
        if double:
            count.problems.append(f"{name} came {len(runs)} times in {len(set(runs))} runs")
        from_here = max([due.begin, *(absence.end for absence in away if absence.begin <= due.begin + limit)])
        count.note_late(name, max(found[0][0] - from_here, 0), limit)
    count.problems += [f"{state} at {moment:.1f} was not due then" for moment, state, _ in left]
    return count


def count_backups(dues, shown, absences, limit):
    """`shown`: (moment, step, student). `absences`: of the agent. A killed agent may lose the step that it has just
    taken from its queue, and of several overdue steps of one lesson it shows only the newest."""
    count = Count()
    for (step, student), due in dues.items():
        count.due += 1
        name = f"backup {step} of {student}"
        moments = sorted(moment for moment, *which in shown if which == [step, student])
        away = [absence for absence in absences if absence.begin - limit <= due <= absence.end]
        count.came += bool(moments)
        if not moments:
            count.missed += bool(away)
            if not away:
                count.problems.append(f"{name} is missing")
            continue
        if len(moments) > 1:
            count.double += len(moments) - 1
            count.problems.append(f"{name} came {len(moments)} times")
        if moments[0] < due:
            count.problems.append(f"{name} came {due - moments[0]:.1f} s early")
        count.note_late(name, max(moments[0] - max([due, *(absence.end for absence in away)]), 0), limit)
    return count
