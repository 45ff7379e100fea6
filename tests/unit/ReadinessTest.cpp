// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/Readiness.h"

#include "Corvane/Notifications/BackupNotifications.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

using Condition = CalendarStatus::Condition;

namespace {

Lesson lessonOfStudentAt(const char *time, const QString &student = u"Anna"_s)
{
    return sampleLesson(student, at(time), minutes(25));
}

CalendarStatus calendar(std::optional<Date> lastRead, Condition condition = Condition::answers)
{
    CalendarStatus status;
    status.identifier = u"A"_s;
    status.name = u"A"_s;
    status.condition = condition;
    status.lastRead = lastRead;
    return status;
}

QStringList backupsOf(const Lesson &lesson)
{
    QStringList identifiers;
    for (const NotificationRequest &request : backupNotifications(lesson, u"own."_s)) {
        identifiers.append(request.identifier);
    }
    return identifiers;
}

} // namespace

class ReadinessTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theCheckIsDueInTheTwentyMinutesBeforeTheFirstLesson_data()
    {
        QTest::addColumn<Date>("now");
        QTest::addColumn<bool>("isDue");
        QTest::newRow("too early") << at("09:39:59.9") << false;
        QTest::newRow("twenty minutes before") << at("09:40:00") << true;
        QTest::newRow("just before the start") << at("09:59:59.9") << true;
        QTest::newRow("at the start") << at("10:00:00") << false;
        QTest::newRow("before the second lesson") << at("11:50:00") << false;
    }

    void theCheckIsDueInTheTwentyMinutesBeforeTheFirstLesson()
    {
        QFETCH(Date, now);
        QFETCH(bool, isDue);
        // Not sorted by start.
        const std::vector lessons{lessonOfStudentAt("12:00:00"), lessonOfStudentAt("10:00:00")};
        QCOMPARE(readiness::dueLook(lessons, now), isDue ? std::optional(at("10:00:00")) : std::nullopt);
    }

    void aDayWithoutLessonsNeedsNoCheck() { QVERIFY(!readiness::dueLook({}, at("09:50:00"))); }

    void aCalendarCountsAsAnsweredIfItWasReadThatDay_data()
    {
        QTest::addColumn<CalendarStatus>("status");
        QTest::addColumn<bool>("isUnanswered");
        QTest::newRow("just now") << calendar(at("09:39:30")) << false;
        QTest::newRow("at the day's first moment") << calendar(at("00:00:00")) << false;
        QTest::newRow("silent since") << calendar(at("08:00:00"), Condition::silent) << false;
        QTest::newRow("yesterday") << calendar(at("00:00:00") - Seconds{1}, Condition::silent) << true;
        QTest::newRow("never") << calendar(std::nullopt, Condition::unread) << true;
        QTest::newRow("without a password") << calendar(std::nullopt, Condition::awaitsPassword) << true;
        QTest::newRow("not a calendar") << calendar(std::nullopt, Condition::leftOut) << false;
    }

    void aCalendarCountsAsAnsweredIfItWasReadThatDay()
    {
        QFETCH(CalendarStatus, status);
        const auto found = readiness::unanswered({status}, at("09:40:00"), DayCalendar(QTimeZone::utc()));
        QTEST(found.size() == 1, "isUnanswered");
    }

    void everyFutureBackupMustBePending()
    {
        const std::vector lessons{lessonOfStudentAt("10:00:00"), lessonOfStudentAt("11:00:00", u"Ben"_s)};
        const QStringList all = backupsOf(lessons[0]) + backupsOf(lessons[1]);
        QVERIFY(readiness::hasBackups(lessons, all + QStringList{u"other.1"_s}, u"own."_s, at("09:40:00")));
        QVERIFY(readiness::hasBackups({}, {}, u"own."_s, at("09:40:00")));
        for (const QString &missing : all) {
            QStringList pending = all;
            pending.removeAll(missing);
            QVERIFY2(!readiness::hasBackups(lessons, pending, u"own."_s, at("09:40:00")),
                     qPrintable(missing));
        }
    }

    void dueAndPastBackupsAreNotMissed()
    {
        const Lesson lesson = lessonOfStudentAt("10:00:00");
        QVERIFY(readiness::hasBackups({lesson}, {}, u"own."_s, at("10:25:00")));
        // All but the first, which is due `preparationLeadTime` before the start. From a minute before that,
        // it is not missed.
        const QStringList rest = backupsOf(lesson).sliced(1);
        QVERIFY(!readiness::hasBackups({lesson}, rest, u"own."_s, at("09:54:59")));
        QVERIFY(readiness::hasBackups({lesson}, rest, u"own."_s, at("09:55:00")));
    }

    void aNameCutByTheAgentIsNotMissed()
    {
        const Lesson lesson = lessonOfStudentAt("10:00:00", QString(1000, u'x'));
        QStringList pending = backupsOf(lesson);
        for (QString &identifier : pending) {
            identifier = identifier.first(200) + u"…digest"_s;
        }
        QVERIFY(readiness::hasBackups({lesson}, pending, u"own."_s, at("09:40:00")));
    }

    void eachProblemIsNamedWithItsRemedy_data()
    {
        QTest::addColumn<Readiness>("found");
        QTest::addColumn<QString>("problems");
        QTest::addColumn<QString>("body");
        QTest::newRow("none") << Readiness{} << QString() << QString();
        QTest::newRow("calendar") << Readiness{.unansweredCalendars = {calendar({}, Condition::silent)}}
                                  << u"calendars=1"_s
                                  << u"No answer from the calendar “A”. Today's schedule may lack lessons. "
                                     u"Please check your internet connection. Quillet keeps trying."_s;
        QTest::newRow("screen") << Readiness{.hasScreen = false} << u"screen"_s
                                << u"No screen can show a banner: switch your monitor on."_s;
        QTest::newRow("sound") << Readiness{.hasSound = false} << u"sound"_s
                               << u"There is no sound: check your sound settings."_s;
        QTest::newRow("notifications")
            << Readiness{.showsNotifications = false} << u"notifications"_s
            << u"Notifications are off: switch them on in your desktop's settings."_s;
        QTest::newRow("backups") << Readiness{.hasBackups = false} << u"backups"_s
                                 << u"Notifications are not prepared: quit Quillet and start it again."_s;
        QTest::newRow("two") << Readiness{.hasSound = false, .hasBackups = false} << u"sound backups"_s
                             << u"There is no sound: check your sound settings. Notifications are not "
                                u"prepared: quit Quillet and start it again."_s;
    }

    void eachProblemIsNamedWithItsRemedy()
    {
        QFETCH(Readiness, found);
        QTEST(readiness::problems(found), "problems");
        QTEST(readiness::body(found, at("09:40:00"), QLocale::c()), "body");
    }
};

QUILLET_TEST(ReadinessTest, runTest<ReadinessTest>);
#include "ReadinessTest.moc"
