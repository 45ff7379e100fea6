// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Notifications/BackupNotifications.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"
#include "tests/unit/AnnasLesson.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTest>

#include <csignal>
#include <limits>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

// Makes the requests of a lesson with this start in a child process; returns the signal that ended it, or 0.
int endOfMakingRequests(double start)
{
    const pid_t child = ::fork();
    if (child == 0) {
        // Without a core file and without the test framework's crash report.
        ::signal(SIGABRT, SIG_DFL);
        const rlimit none{0, 0};
        ::setrlimit(RLIMIT_CORE, &none);
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        Lesson lesson = annasLesson();
        lesson.startTime = dateSince1970(start);
        const auto requests = backupNotifications(lesson, {});
        ::_exit(requests.front().identifier.isEmpty() ? 1 : 0);
    }
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child) {
        qFatal("no child process");
    }
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

} // namespace

class BackupNotificationsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aLessonHasFiveNotificationsWithTextsAndFireDates()
    {
        const auto requests = backupNotifications(annasLesson(), u"quillet.backup."_s);
        struct Expected {
            const char *kind;
            Date fireDate;
            QString title;
            QString body;
            Date expirationDate;
        };
        const std::array<Expected, 5> expected{{
            {"prepare", at("09:56:00"), u"Quillet: prepare"_s, u"Anna starts in 4 minutes."_s,
             at("10:00:00")},
            {"one-minute", at("09:59:00"), u"Quillet: 1 minute"_s, u"Anna starts in 1 minute."_s,
             at("10:00:00")},
            {"join", at("09:59:30"), u"Quillet: join now"_s, u"Join Anna now."_s, at("10:00:00")},
            {"start", at("09:59:40"), u"Quillet: START NOW"_s, u"Anna starts in 20 seconds."_s,
             at("10:00:00")},
            {"finish", at("10:24:00"), u"Quillet: finish up"_s, u"Finish Anna now."_s, at("10:25:00")},
        }};
        for (std::size_t i = 0; i < expected.size(); ++i) {
            QCOMPARE(requests[i].identifier, identifier(expected[i].kind));
            QCOMPARE(requests[i].title, expected[i].title);
            QCOMPARE(requests[i].body, expected[i].body);
            QCOMPARE(requests[i].categoryIdentifier, u"quillet.lesson"_s);
            QCOMPARE(requests[i].fireDate, expected[i].fireDate);
            QCOMPARE(requests[i].expirationDate, expected[i].expirationDate);
        }
    }

    void anIdentifierHasKindStartAndStudent()
    {
        const auto requests = backupNotifications(
            sampleLesson(u"Anna Smith"_s, dateSince1970(1763190000), minutes(25)), u"quillet.backup."_s);
        QCOMPARE(requests[3].identifier, u"quillet.backup.start.1763190000.Anna Smith"_s);
    }

    void theStartInTheIdentifierIsTruncatedTowardsZero()
    {
        const auto of = [](double start) {
            return backupNotifications(sampleLesson(u"A"_s, dateSince1970(start), minutes(25)), {})[0]
                .identifier;
        };
        QCOMPARE(of(1763190000.9), u"prepare.1763190000.A"_s);
        QCOMPARE(of(-0.9), u"prepare.0.A"_s);
        QCOMPARE(of(-1.9), u"prepare.-1.A"_s);
    }

    void fireDatesFollowTheProfileButTheWordingDoesNot()
    {
        Lesson lesson = annasLesson();
        lesson.profile.preparationLeadTime = minutes(10);
        lesson.profile.joinEarlyTime = Seconds{90};
        lesson.profile.finishUpLeadTime = Seconds{120};
        const auto requests = backupNotifications(lesson, {});
        QCOMPARE(requests[0].fireDate, at("09:50:00"));
        QCOMPARE(requests[0].body, u"Anna starts in 4 minutes."_s);
        QCOMPARE(requests[2].fireDate, at("09:58:30"));
        QCOMPARE(requests[4].fireDate, at("10:23:00"));
        QCOMPARE(backupNotifications(annasLesson(TeachingPlatform::microsoftTeams), {})[2].fireDate,
                 at("09:59:00"));
    }

    void aStudentsNameIsUsedUnchanged()
    {
        const auto requests =
            backupNotifications(sampleLesson(u"%1 <b>王</b>.\n%2"_s, at("10:00:00"), minutes(25)), u"p."_s);
        QCOMPARE(requests[2].body, u"Join %1 <b>王</b>.\n%2 now."_s);
        QCOMPARE(requests[2].identifier,
                 u"p.join."_s + QLatin1StringView(tenOClock) + u".%1 <b>王</b>.\n%2"_s);
    }

    void aStartBeyond64BitSecondsAbortsTheProcess()
    {
        QCOMPARE(endOfMakingRequests(1763190000), 0);
        QCOMPARE(endOfMakingRequests(-9223372036854775808.0), 0);
        QCOMPARE(endOfMakingRequests(9223372036854774784.0), 0); // the last double before the limit
        QCOMPARE(endOfMakingRequests(9223372036854775808.0), SIGABRT);
        QCOMPARE(endOfMakingRequests(-9223372036854777856.0), SIGABRT);
        QCOMPARE(endOfMakingRequests(std::numeric_limits<double>::infinity()), SIGABRT);
        QCOMPARE(endOfMakingRequests(std::numeric_limits<double>::quiet_NaN()), SIGABRT);
    }
};

QUILLET_TEST(BackupNotificationsTest, runTest<BackupNotificationsTest>);
#include "BackupNotificationsTest.moc"
