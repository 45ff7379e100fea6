#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""What scripts/soak counts as due, missing, late and duplicated.

    soak_counts.py SoakCounts.changeoversAndBackupsFollowTheLessons
"""
import unittest

from teaching_day import Absence, Lesson, backups, changeovers, count_backups, count_banners

LIMIT = 4.0
ANNA = Lesson("Anna", "Zoom", 1000, 2000)
BEN = Lesson("Ben", "Microsoft Teams", 2000, 3000)    # back to back
CLEO = Lesson("Cleo", "Zoom", 3130, 4000)             # after a break of two minutes
DAY = [ANNA, BEN, CLEO]


def on_time(dues):
    return [(due.begin + 0.5, due.state, 1) for due in dues]


class SoakCounts(unittest.TestCase):
    def test_list_is_empty_so_that_each_count_is_named(self):
        self.fail("name the test to run")

    def changeoversAndBackupsFollowTheLessons(self):
        self.assertEqual([(due.state, due.student, due.begin, due.end) for due in changeovers(DAY)], [
            ("prepare", "Anna", 760, 940), ("oneMinuteWarning", "Anna", 940, 970), ("joinPlatform", "Anna", 970, 980),
            ("startNow", "Anna", 980, 1005), ("wrapUp", "Anna", 1940, 2000),
            ("startNow", "Ben", 2000, 2005), ("wrapUp", "Ben", 2940, 3000),
            ("prepare", "Cleo", 3000, 3070), ("oneMinuteWarning", "Cleo", 3070, 3100),
            ("joinPlatform", "Cleo", 3100, 3110), ("startNow", "Cleo", 3110, 3135), ("wrapUp", "Cleo", 3940, 4000)])
        self.assertEqual([backups([BEN])[step, "Ben"] for step in ("prepare", "one-minute", "join", "start", "finish")],
                         [1760, 1940, 1940, 1980, 2940])

    def count(self, banners, absences=()):
        return count_banners(changeovers(DAY), banners, absences, LIMIT)

    def missingLateDoubleAndUnexpectedBannersAreProblems(self):
        dues = changeovers(DAY)
        banners = on_time(dues)
        whole = self.count(banners)
        self.assertEqual((whole.due, whole.came, whole.problems), (12, 12, []))
        self.assertEqual(self.count(banners[1:]).problems, ["prepare of Anna is missing"])
        self.assertEqual(self.count([(766.0, "prepare", 1), *banners[1:]]).problems,
                         ["prepare of Anna came 6.0 s late"])
        self.assertEqual(self.count([*banners, (800.0, "prepare", 1)]).problems,
                         ["prepare of Anna came 2 times in 1 runs"])
        self.assertEqual(self.count([*banners, (759.9, "prepare", 1)]).problems, ["prepare at 759.9 was not due then"])

    def aKilledProgramAnnouncesTheRunningPhaseAgain(self):
        banners = [*on_time(changeovers(DAY)), (800.0, "prepare", 2)]
        again = self.count(banners, [Absence(790, 799)])
        self.assertEqual((again.again, again.problems), (1, []))
        twice = self.count([*banners, (805.0, "prepare", 2)], [Absence(790, 799)])
        self.assertEqual((twice.double, twice.problems), (1, ["prepare of Anna came 3 times in 2 runs"]))

    def changeoversDuringAnAbsenceAreNotMissing(self):
        banners = [banner for banner in on_time(changeovers(DAY)) if banner[:2] != (2000.5, "startNow")]
        away = self.count(banners, [Absence(1995, 2006)])
        self.assertEqual((away.missed, away.problems), (1, []))
        # But here the program was back in time.
        self.assertEqual(self.count(banners, [Absence(1985, 1996)]).problems, ["startNow of Ben is missing"])
        # Lateness counts from the program's return.
        late = [(949.0 if due.state == "oneMinuteWarning" and due.student == "Anna" else due.begin, due.state, 1)
                for due in changeovers(DAY)]
        self.assertEqual(self.count(late, [Absence(938, 948)]).problems, [])
        self.assertEqual(self.count(late, [Absence(938, 943)]).problems, ["oneMinuteWarning of Anna came 6.0 s late"])

    def missingLateDoubleAndEarlyBackupsAreProblems(self):
        dues = backups([ANNA])
        shown = [(moment + 0.1, *which) for which, moment in dues.items()]
        self.assertEqual(count_backups(dues, shown, [], LIMIT).problems, [])
        self.assertEqual(count_backups(dues, shown[:-1], [], LIMIT).problems, ["backup finish of Anna is missing"])
        self.assertEqual(count_backups(dues, [*shown, shown[0]], [], LIMIT).problems,
                         ["backup prepare of Anna came 2 times"])
        self.assertEqual(count_backups(dues, [(766.0, "prepare", "Anna"), *shown[1:]], [], LIMIT).problems,
                         ["backup prepare of Anna came 6.0 s late"])
        self.assertEqual(count_backups(dues, [(759.0, "prepare", "Anna"), *shown[1:]], [], LIMIT).problems,
                         ["backup prepare of Anna came 1.0 s early"])

    def backupsLostWithAKilledAgentAreNotMissing(self):
        dues = backups([ANNA])
        shown = [(moment + 0.1, *which) for which, moment in dues.items()][1:]
        lost = count_backups(dues, shown, [Absence(761, 770)], LIMIT)
        self.assertEqual((lost.missed, lost.problems), (1, []))
        self.assertEqual(count_backups(dues, shown, [Absence(780, 790)], LIMIT).problems,
                         ["backup prepare of Anna is missing"])


if __name__ == "__main__":
    unittest.main(verbosity=2)
