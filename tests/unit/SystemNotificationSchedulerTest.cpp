// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Notifications/SystemNotificationScheduler.h"
#include "Corvane/Utilities/Spawn.h"
#include "tests/support/FakeUserNotificationCenter.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"
#include "tests/unit/AnnasLesson.h"

#include <QTemporaryDir>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

struct SystemNotificationSchedulerFixture {
    explicit SystemNotificationSchedulerFixture(const char *time) : clock(at(time)) {}

    ManualClock clock;
    QTemporaryDir library;
    DebugLogService logger{library.path()};
    FakeUserNotificationCenter center;
    SystemNotificationScheduler scheduler{center, logger, u"quillet.backup."_s};

    void schedule(std::vector<Lesson> lessons)
    {
        spawn(scheduler.scheduleBackupNotifications(std::move(lessons)));
    }

    [[nodiscard]] QStringList logged() const
    {
        QStringList messages;
        for (const QString &line : logger.latestLines()) {
            messages.append(line.sliced(25));
        }
        return messages;
    }
};

QStringList allIdentifiers(const QString &student = u"Anna"_s)
{
    return {identifier("prepare", student), identifier("one-minute", student), identifier("join", student),
            identifier("start", student), identifier("finish", student)};
}

NotificationRequest foreign()
{
    return {.identifier = u"quillet.other.1"_s,
            .title = u"Other"_s,
            .body = {},
            .categoryIdentifier = {},
            .fireDate = at("23:00:00"),
            .expirationDate = at("23:30:00")};
}

const auto scheduledOne = u"scheduled system backup notifications lessons=1"_s;

} // namespace

class SystemNotificationSchedulerTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aRunAsksRemovesAndAddsInOrder()
    {
        SystemNotificationSchedulerFixture f("09:00:00");
        const Lesson ben = sampleLesson(u"Ben"_s, at("10:00:00"), minutes(25));
        f.schedule({ben, annasLesson()});
        QStringList expected{u"authorize"_s, u"pending"_s, u"remove "_s};
        for (const QString &id : allIdentifiers(u"Ben"_s) + allIdentifiers()) {
            expected.append(u"add "_s + id);
        }
        QCOMPARE(f.center.calls, expected);
        QCOMPARE(f.logged(), QStringList{u"scheduled system backup notifications lessons=2"_s});
    }

    void theSameLessonsAgainDoNothing()
    {
        SystemNotificationSchedulerFixture f("09:00:00");
        f.schedule({annasLesson()});
        f.center.calls.clear();
        f.clock.advance(minutes(1));
        f.schedule({annasLesson()}); // the same lesson with a new identifier
        QVERIFY(f.center.calls.isEmpty());
        QCOMPARE(f.logged(), QStringList{scheduledOne});
    }

    void aZoomLessonHalfAMinuteAwayGetsOnlyStartAndFinish()
    {
        SystemNotificationSchedulerFixture f("09:59:30");
        f.schedule({annasLesson()});
        QCOMPARE(f.center.identifiers(), (QStringList{identifier("start"), identifier("finish")}));
        QCOMPARE(f.logged(), QStringList{scheduledOne});
    }

    void aFireDateNowIsSkippedButOneJustAheadIsNot()
    {
        SystemNotificationSchedulerFixture f("09:59:39.9");
        f.schedule({annasLesson()});
        QCOMPARE(f.center.identifiers(), (QStringList{identifier("start"), identifier("finish")}));
        SystemNotificationSchedulerFixture g("09:59:40");
        g.schedule({annasLesson()});
        QCOMPARE(g.center.identifiers(), QStringList{identifier("finish")});
    }

    void aLessonThatEndedASecondAgoIsNeitherInTheSignatureNorScheduled()
    {
        SystemNotificationSchedulerFixture f("10:25:01");
        const Lesson ben = sampleLesson(u"Ben"_s, at("11:00:00"), minutes(25));
        f.schedule({annasLesson(), ben});
        QCOMPARE(f.center.requests.size(), std::size_t{5});
        QCOMPARE(f.logged(), QStringList{scheduledOne});
        f.center.calls.clear();
        f.schedule({ben}); // the same signature
        QVERIFY(f.center.calls.isEmpty());
    }

    void aLessonThatEndsNowHasEnded()
    {
        SystemNotificationSchedulerFixture f("10:25:00");
        f.schedule({annasLesson()});
        QCOMPARE(f.logged(), QStringList{u"scheduled system backup notifications lessons=0"_s});
    }

    void aLessonInProgressKeepsItsFinish()
    {
        SystemNotificationSchedulerFixture f("10:10:00");
        f.schedule({annasLesson()});
        QCOMPARE(f.center.identifiers(), QStringList{identifier("finish")});
    }

    void aLessonInItsLastMinuteCountsWithoutNotifications()
    {
        SystemNotificationSchedulerFixture f("10:24:30");
        f.schedule({annasLesson()});
        QVERIFY(f.center.requests.empty());
        QCOMPARE(f.logged(), QStringList{scheduledOne});
    }

    void withEveryLessonRemovedAllBackupsAreRemoved()
    {
        SystemNotificationSchedulerFixture f("09:00:00");
        f.center.requests.push_back(foreign());
        f.schedule({annasLesson()});
        f.center.calls.clear();
        f.schedule({});
        QCOMPARE(f.center.calls,
                 (QStringList{u"authorize"_s, u"pending"_s, u"remove "_s + allIdentifiers().join(u", "_s)}));
        QCOMPARE(f.center.identifiers(), QStringList{foreign().identifier});
        QCOMPARE(f.logged(),
                 (QStringList{scheduledOne, u"scheduled system backup notifications lessons=0"_s}));
        f.center.calls.clear();
        f.schedule({});
        QVERIFY(f.center.calls.isEmpty());
    }

    void theFirstRunCompletesEvenWithoutLessons()
    {
        SystemNotificationSchedulerFixture f("09:00:00");
        f.schedule({});
        QCOMPARE(f.center.calls, (QStringList{u"authorize"_s, u"pending"_s, u"remove "_s}));
        QCOMPARE(f.logged(), QStringList{u"scheduled system backup notifications lessons=0"_s});
    }

    void lessonsWithTheSameStudentAndStartShareRequestsAndTheLastWins()
    {
        SystemNotificationSchedulerFixture f("09:00:00");
        const Lesson longer =
            sampleLesson(u"Anna"_s, at("10:00:00"), minutes(50), TeachingPlatform::microsoftTeams);
        f.schedule({annasLesson(), longer});
        QCOMPARE(f.center.identifiers(), allIdentifiers());
        QCOMPARE(f.center.requests[2].fireDate, at("09:59:00"));
        QCOMPARE(f.center.requests[4].fireDate, at("10:49:00"));
        QCOMPARE(f.logged(), QStringList{u"scheduled system backup notifications lessons=2"_s});
    }

    void aMovedLessonsBackupsReplaceTheEarlierOnes()
    {
        SystemNotificationSchedulerFixture f("09:00:00");
        f.schedule({annasLesson()});
        Lesson moved = annasLesson();
        moved.startTime += Seconds{30};
        f.schedule({moved});
        QCOMPARE(f.center.requests.size(), std::size_t{5});
        for (const QString &id : allIdentifiers()) {
            QVERIFY2(!f.center.identifiers().contains(id), qPrintable(id));
        }
        QCOMPARE(f.center.requests[3].fireDate, at("10:00:10"));
    }

    void aStartThatMovesByAFractionIsAnotherSchedule()
    {
        SystemNotificationSchedulerFixture f("09:00:00");
        f.schedule({annasLesson()});
        Lesson moved = annasLesson();
        moved.startTime += Seconds{0.25};
        f.schedule({moved});
        QCOMPARE(f.logged(), (QStringList{scheduledOne, scheduledOne}));
        QCOMPARE(f.center.identifiers(), allIdentifiers());
        QCOMPARE(f.center.requests[3].fireDate, at("09:59:40.25"));
    }

    void theOrderOfTheLessonsIsPartOfTheSignature()
    {
        SystemNotificationSchedulerFixture f("09:00:00");
        const Lesson ben = sampleLesson(u"Ben"_s, at("10:00:00"), minutes(25));
        f.schedule({annasLesson(), ben});
        f.schedule({ben, annasLesson()});
        QCOMPARE(f.logged().size(), 2);
    }

    void aRefusedPermissionIsLoggedAndAskedAgain()
    {
        SystemNotificationSchedulerFixture f("09:00:00");
        f.center.authorization = false;
        f.schedule({annasLesson()});
        f.schedule({annasLesson()});
        QCOMPARE(f.center.calls, (QStringList{u"authorize"_s, u"authorize"_s}));
        const auto refused = u"system notification permission was not granted"_s;
        QCOMPARE(f.logged(), (QStringList{refused, refused}));
        f.center.authorization = true;
        f.schedule({annasLesson()});
        QCOMPARE(f.center.identifiers(), allIdentifiers());
    }

    void aFailedAuthorisationIsLoggedAndTriedAgain()
    {
        SystemNotificationSchedulerFixture f("09:00:00");
        f.center.authorization = std::unexpected(Failure{u"there is no session bus"_s});
        f.schedule({annasLesson()});
        QCOMPARE(f.center.calls, QStringList{u"authorize"_s});
        QCOMPARE(f.logged(),
                 QStringList{u"system notification scheduling failed error=there is no session bus"_s});
        f.center.authorization = true;
        f.schedule({annasLesson()});
        QCOMPARE(f.center.identifiers(), allIdentifiers());
    }

    void aFailedQueryOfPendingRequestsEndsTheRun()
    {
        SystemNotificationSchedulerFixture f("09:00:00");
        f.center.pendingFailure = Failure{u"gone"_s};
        f.schedule({annasLesson()});
        QCOMPARE(f.center.calls, (QStringList{u"authorize"_s, u"pending"_s}));
        QCOMPARE(f.logged(), QStringList{u"system notification scheduling failed error=gone"_s});
    }

    void aFailedRemovalEndsTheRun()
    {
        SystemNotificationSchedulerFixture f("09:00:00");
        f.center.removalFailure = Failure{u"gone"_s};
        f.schedule({annasLesson()});
        QCOMPARE(f.center.calls, (QStringList{u"authorize"_s, u"pending"_s, u"remove "_s}));
        QCOMPARE(f.logged(), QStringList{u"system notification scheduling failed error=gone"_s});
    }

    void aFailedAddEndsTheRunAndTheNextRunRepeatsAll()
    {
        SystemNotificationSchedulerFixture f("09:00:00");
        f.center.addFailure = Failure{u"the disk is full"_s};
        f.center.addsBeforeFailure = 2;
        f.schedule({annasLesson()});
        QCOMPARE(f.center.identifiers(), (QStringList{identifier("prepare"), identifier("one-minute")}));
        QCOMPARE(f.center.calls.last(), u"add "_s + identifier("join"));
        QCOMPARE(f.logged(), QStringList{u"system notification scheduling failed error=the disk is full"_s});

        f.center.addFailure.reset();
        f.center.calls.clear();
        f.schedule({annasLesson()});
        QCOMPARE(f.center.calls.at(2),
                 u"remove "_s + identifier("prepare") + u", "_s + identifier("one-minute"));
        QCOMPARE(f.center.identifiers(), allIdentifiers());
        QCOMPARE(f.logged().last(), scheduledOne);
    }

    void aFailedRunKeepsTheSignatureOfTheLastCompleteOne()
    {
        SystemNotificationSchedulerFixture f("09:00:00");
        f.schedule({annasLesson()});
        f.center.authorization = std::unexpected(Failure{u"away"_s});
        f.schedule({});
        f.center.calls.clear();
        f.schedule({annasLesson()}); // still the last schedule that was completed
        QVERIFY(f.center.calls.isEmpty());
    }

    void theFiveRequestsAreAddedInTurn()
    {
        SystemNotificationSchedulerFixture f("09:00:00");
        f.center.hold();
        f.schedule({annasLesson()});
        for (int done = 0; done < 8; ++done) {
            QCOMPARE(f.center.calls.size(), done + 1);
            QCOMPARE(f.center.waitingCount(), std::size_t{1});
            QVERIFY(f.logged().isEmpty());
            f.center.releaseOne();
        }
        QCOMPARE(f.logged(), QStringList{scheduledOne});
    }

    void aFireDateThatPassesDuringTheRunIsSkipped()
    {
        SystemNotificationSchedulerFixture f("09:58:59");
        f.center.hold();
        f.schedule({annasLesson()});
        for (int done = 0; done < 3; ++done) {
            f.center.releaseOne();
        }
        QCOMPARE(f.center.calls.last(), u"add "_s + identifier("one-minute"));
        f.clock.advanceTo(at("09:59:35"));
        f.center.release();
        QCOMPARE(f.center.identifiers(),
                 (QStringList{identifier("one-minute"), identifier("start"), identifier("finish")}));
    }

    void ofTwoOverlappingRunsTheLastToEndDecides()
    {
        SystemNotificationSchedulerFixture f("09:00:00");
        const Lesson ben = sampleLesson(u"Ben"_s, at("10:00:00"), minutes(25));
        f.center.hold();
        f.schedule({annasLesson()});
        f.schedule({ben});
        QCOMPARE(f.center.calls, (QStringList{u"authorize"_s, u"authorize"_s}));
        f.center.release();
        QCOMPARE(f.logged(), (QStringList{scheduledOne, scheduledOne}));
        // Both runs read what was pending before either had added anything. Nothing prevents that; the next
        // run that is not skipped removes the first one's set.
        QCOMPARE(f.center.requests.size(), std::size_t{10});
        f.center.calls.clear();
        f.schedule({ben});
        QVERIFY(f.center.calls.isEmpty());
        f.schedule({annasLesson()});
        QCOMPARE(f.center.identifiers(), allIdentifiers());
    }

    void aLaterRunRemovesWhatAnEarlierOneStillAdds()
    {
        SystemNotificationSchedulerFixture f("09:00:00");
        const Lesson ben = sampleLesson(u"Ben"_s, at("10:00:00"), minutes(25));
        f.center.hold();
        f.schedule({annasLesson()});
        for (int done = 0; done < 8; ++done) {
            f.center.releaseOne();
        }
        f.schedule({ben});
        f.center.release();
        QCOMPARE(f.center.identifiers(), allIdentifiers(u"Ben"_s));
    }

    void aRunDoesNotTouchADestroyedScheduler()
    {
        // The scheduler ends at each of a run's waits.
        for (int done = 0; done < 8; ++done) {
            ManualClock clock(at("09:00:00"));
            FakeUserNotificationCenter center;
            {
                const QTemporaryDir library;
                DebugLogService logger(library.path());
                SystemNotificationScheduler scheduler(center, logger, u"quillet.backup."_s);
                center.hold();
                spawn(scheduler.scheduleBackupNotifications({annasLesson()}));
                for (int i = 0; i < done; ++i) {
                    center.releaseOne();
                }
            }
            QCOMPARE(center.calls.size(), done + 1);
            center.release();
            QCOMPARE(center.calls.size(), done + 1);
        }
    }

    void theRequestsOutliveTheScheduler()
    {
        ManualClock clock(at("09:00:00"));
        const QTemporaryDir library;
        DebugLogService logger(library.path());
        FakeUserNotificationCenter center;
        {
            SystemNotificationScheduler scheduler(center, logger, u"quillet.backup."_s);
            spawn(scheduler.scheduleBackupNotifications({annasLesson()}));
        }
        QCOMPARE(center.identifiers(), allIdentifiers());
    }
};

QUILLET_TEST(SystemNotificationSchedulerTest, runTest<SystemNotificationSchedulerTest>);
#include "SystemNotificationSchedulerTest.moc"
