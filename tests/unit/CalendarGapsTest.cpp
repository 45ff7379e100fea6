// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/CalendarGaps.h"

#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

using Condition = CalendarStatus::Condition;

CalendarStatus gap(const QString &name, Condition condition = Condition::silent)
{
    CalendarStatus status;
    status.identifier = name;
    status.name = name;
    status.condition = condition;
    status.failingSince = at("09:14:00");
    return status;
}

QString body(const std::vector<CalendarStatus> &gaps, const char *now = "09:20:00")
{
    return calendarGaps::body(gaps, at(now), QLocale(QLocale::German));
}

} // namespace

class CalendarGapsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void onlyCalendarsWhoseLessonsAreMissingAreGaps()
    {
        CalendarStatus remembered = gap(u"remembered"_s);
        remembered.usesLastAnswer = true;
        const std::vector<CalendarStatus> gaps =
            calendarGaps::among({gap(u"unread"_s, Condition::unread), gap(u"fine"_s, Condition::answers),
                                 remembered, gap(u"silent"_s)});
        QCOMPARE(gaps.size(), std::size_t{1});
        QCOMPARE(gaps.front().name, u"silent"_s);
    }

    void theNoticeSaysWhichCalendarsAndWhy_data()
    {
        QTest::addColumn<Condition>("condition");
        QTest::addColumn<QString>("one");
        QTest::addColumn<QString>("two");
        QTest::newRow("silent") << Condition::silent << u"No answer from the calendar “A”"_s
                                << u"No answer from the calendars “A” and “B”"_s;
        QTest::newRow("password") << Condition::awaitsPassword << u"The calendar “A” waits for a password"_s
                                  << u"The calendars “A” and “B” wait for a password"_s;
        QTest::newRow("unopened") << Condition::unopened << u"The calendar “A” cannot be read"_s
                                  << u"The calendars “A” and “B” cannot be read"_s;
        QTest::newRow("a file") << Condition::unreadable << u"The calendar “A” cannot be read"_s
                                << u"The calendars “A” and “B” cannot be read"_s;
    }

    void theNoticeSaysWhichCalendarsAndWhy()
    {
        QFETCH(Condition, condition);
        QFETCH(QString, one);
        QFETCH(QString, two);
        QCOMPARE(calendarGaps::notice({gap(u"A"_s, condition)}), one);
        QCOMPARE(calendarGaps::notice({gap(u"A"_s, condition), gap(u"B"_s, condition)}), two);
    }

    void calendarsThatFailForDifferentReasonsShareOneNotice()
    {
        QCOMPARE(calendarGaps::notice({gap(u"A"_s), gap(u"B"_s, Condition::unopened)}),
                 u"Lessons are missing from the calendars “A” and “B”"_s);
    }

    void manyCalendarsAreCounted()
    {
        QCOMPARE(calendarGaps::notice({gap(u"A"_s), gap(u"B"_s), gap(u"C"_s)}),
                 u"No answer from the calendars “A”, “B” and “C”"_s);
        QCOMPARE(calendarGaps::notice({gap(u"A"_s), gap(u"B"_s), gap(u"C"_s), gap(u"D"_s), gap(u"E"_s)}),
                 u"No answer from the calendars “A”, “B” and 3 more"_s);
    }

    void withoutGapsThereIsNoNotice() { QCOMPARE(calendarGaps::notice({}), QString()); }

    void aStrangersNameIsTruncatedToOneShortLine()
    {
        QCOMPARE(calendarGaps::notice({gap(QString(1'000'000, u'x'))}),
                 u"No answer from the calendar “"_s + QString(39, u'x') + u"…”"_s);
        QCOMPARE(calendarGaps::notice({gap(u"one\ntwo\t three"_s)}),
                 u"No answer from the calendar “one two three”"_s);
        const QString longest(40, u'x');
        QCOMPARE(calendarGaps::notice({gap(longest)}), u"No answer from the calendar “"_s + longest + u'”');
        // The cut does not split a surrogate pair.
        const QString bell = u"🔔"_s;
        QCOMPARE(calendarGaps::notice({gap(QString(38, u'x') + bell + bell)}),
                 u"No answer from the calendar “"_s + QString(38, u'x') + u"…”"_s);
    }

    void theNotificationSaysWhatIsMissingSinceWhenAndWhatToDo()
    {
        QCOMPARE(calendarGaps::title({gap(u"A"_s)}), u"A calendar is missing"_s);
        QCOMPARE(body({gap(u"A"_s)}),
                 u"No answer from the calendar “A” since 09:14. Today's schedule may lack lessons. "
                 "Please check your internet connection. Quillet keeps trying."_s);
        QCOMPARE(calendarGaps::title({gap(u"A"_s), gap(u"B"_s)}), u"2 calendars are missing"_s);
    }

    void theAdviceFollowsTheReason_data()
    {
        QTest::addColumn<Condition>("condition");
        QTest::addColumn<QString>("advice");
        QTest::newRow("silent") << Condition::silent
                                << u"Please check your internet connection. Quillet keeps trying."_s;
        QTest::newRow("password") << Condition::awaitsPassword
                                  << u"Please sign in to the account in your calendar program."_s;
        QTest::newRow("unopened") << Condition::unopened
                                  << u"Please check in your calendar program. Quillet keeps trying."_s;
        QTest::newRow("a file") << Condition::unreadable
                                << u"Please check whether the file is complete, or save it again."_s;
    }

    void theAdviceFollowsTheReason()
    {
        QFETCH(Condition, condition);
        QFETCH(QString, advice);
        QCOMPARE(body({gap(u"A"_s, condition)}).section(u"lessons. "_s, 1), advice);
        // Different reasons: the advice names none of them.
        const Condition other = condition == Condition::silent ? Condition::unopened : Condition::silent;
        QVERIFY(body({gap(u"A"_s, condition), gap(u"B"_s, other)})
                    .endsWith(u"Please check in your calendar program. Quillet keeps trying."_s));
    }

    void theEarliestOfSeveralFailuresCounts()
    {
        CalendarStatus later = gap(u"B"_s);
        later.failingSince = at("09:16:00");
        QVERIFY(body({later, gap(u"A"_s)}).contains(u"since 09:14."_s));
    }

    void aMisleadingTimeOfDayIsLeftOut()
    {
        CalendarStatus unknown = gap(u"A"_s);
        unknown.failingSince.reset();
        QVERIFY(!body({unknown}).contains(u"since"_s));
        QVERIFY(body({gap(u"A"_s)}, "21:13:00").contains(u"since"_s));
        QVERIFY(!body({gap(u"A"_s)}, "21:14:00").contains(u"since"_s));
    }
};

QUILLET_TEST(CalendarGapsTest, runTest<CalendarGapsTest>);
#include "CalendarGapsTest.moc"
