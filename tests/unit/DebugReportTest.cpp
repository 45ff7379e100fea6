// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/DebugReport.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;
using namespace corvane::debugReport;
using namespace Qt::StringLiterals;
using Condition = CalendarStatus::Condition;

namespace {

const CalendarLessonParser parser(PlatformProfile::defaults());

QStringList texts(const std::vector<Row> &rows)
{
    QStringList texts;
    for (const Row &row : rows) {
        texts.append(rowText(row));
    }
    return texts;
}

CalendarStatus calendarIn(Condition condition, std::optional<Date> since = std::nullopt,
                          const QString &reason = {}, bool usesLastAnswer = false)
{
    return {.identifier = u"1"_s,
            .name = u"Lessons"_s,
            .account = u"anna@school.example"_s,
            .condition = condition,
            .reason = reason,
            .lastRead = at("09:10:00"),
            .failingSince = since,
            .usesLastAnswer = usesLastAnswer,
            .eventCount = 2};
}

Row rowOf(const CalendarStatus &status)
{
    return calendarRows({status}, at("10:00:00"), QLocale::c()).front();
}

CalendarEvent booked(const QString &title, const char *start = "10:00:00", const char *end = "10:30:00")
{
    CalendarEvent event;
    event.title = title;
    event.startDate = at(start);
    event.endDate = at(end);
    return event;
}

DebugSnapshot snapshot()
{
    return {.currentTime = at("09:57:00"),
            .currentLessonDescription = std::nullopt,
            .nextLessonDescription = u"Anna Maria (Zoom)"_s,
            .countdownDescription = u"2m 0s"_s,
            .engineState = LessonState::prepare,
            .secondsUntilNextEvent = 120,
            .lastNotificationDescription = u"Finish up Ben"_s,
            .nextNotificationDescription = std::nullopt,
            .loadedLessonCount = 1,
            .lastCalendarReloadDescription = u"Loaded 1 lesson(s) for today"_s,
            .logPath = u"/home/t/quillet-debug.log"_s};
}

Contents reportContents()
{
    return {
        .snapshot = snapshot(),
        .lessons = {sampleLesson(u"Anna Maria"_s, at("10:00:00"), minutes(25))},
        .calendars = {calendarIn(Condition::silent, at("09:14:00"), u"https://dav.example/x hangs"_s, true)},
        .events = {booked(u"Dinner with Cem & Dora"_s)},
        .logLines = {u"2026-11-16T09:56:00.123Z calendar lesson student=\"Anna Maria\" platform=\"Zoom\""_s,
                     u"2026-11-16T09:56:01.000Z event left out title=\"Emil, Fee\" reason=\"no rule\""_s,
                     u"2026-11-16T09:56:02.000Z file /x/王小明.ics"_s,
                     u"2026-11-16T09:56:03.000Z calendar lesson student=\"王小明\" platform=\"Zoom\""_s},
        .now = at("09:57:00")};
}

} // namespace

class DebugReportTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theSnapshotShowsAllItsValues()
    {
        QCOMPARE(
            texts(snapshotRows(snapshot(), QLocale::c())),
            (QStringList{u"Time, Mon 16 Nov 2026 09:57:00"_s, u"State, prepare"_s, u"Current lesson, None"_s,
                         u"Next lesson, Anna Maria (Zoom)"_s, u"Next change, in 2m 0s, at 09:59:00"_s,
                         u"Last notification, Finish up Ben"_s, u"Next notification, None"_s,
                         u"Lessons loaded, 1"_s, u"Last reload, Loaded 1 lesson(s) for today"_s,
                         u"Log file, /home/t/quillet-debug.log"_s}));
        DebugSnapshot idle = snapshot();
        idle.secondsUntilNextEvent = std::nullopt;
        idle.countdownDescription = u"None"_s;
        QCOMPARE(snapshotRows(idle, QLocale::c())[4].title, u"None"_s);
    }

    void anAnsweringCalendarShowsItsEventsAndLastRead()
    {
        CalendarStatus status = calendarIn(Condition::answers);
        QCOMPARE(rowOf(status), (Row{.tone = Tone::good,
                                     .lead = {},
                                     .title = u"Lessons"_s,
                                     .detail = u"2 events today · last read 09:10 · anna@school.example"_s,
                                     .problem = {}}));
        status.eventCount = 1;
        status.account.clear();
        QCOMPARE(rowOf(status).detail, u"1 event today · last read 09:10"_s);
        status.eventCount = 0;
        status.lastRead = at("09:10:00") - minutes(1440);
        QCOMPARE(rowOf(status).detail, u"no events today · last read Sun 15 Nov 09:10"_s);
    }

    void anUnreadCalendarWaits()
    {
        CalendarStatus status = calendarIn(Condition::unread);
        status.lastRead.reset();
        QCOMPARE(rowOf(status).tone, Tone::waiting);
        QCOMPARE(rowOf(status).detail, u"not read yet · anna@school.example"_s);
        QCOMPARE(rowOf(status).problem, QString());
    }

    void aCalendarsProblemIsExplainedInPlainWords_data()
    {
        QTest::addColumn<Condition>("condition");
        QTest::addColumn<bool>("isDated");
        QTest::addColumn<QString>("reason");
        QTest::addColumn<bool>("usesLastAnswer");
        QTest::addColumn<QString>("problem");
        const auto row = [](const char *name, Condition condition, bool isDated, const QString &reason,
                            bool usesLastAnswer, const QString &problem) {
            QTest::newRow(name) << condition << isDated << reason << usesLastAnswer << problem;
        };
        row("password", Condition::awaitsPassword, false, {}, true,
            u"Waiting for its password, shows its last answer"_s);
        row("password, lessons missing", Condition::awaitsPassword, true, {}, false,
            u"Waiting for its password since 09:14. Its lessons are missing."_s);
        row("silent", Condition::silent, true, {}, true, u"No answer since 09:14, shows its last answer"_s);
        row("silent, lessons missing", Condition::silent, true, {}, false,
            u"No answer since 09:14. Its lessons are missing."_s);
        row("unopened", Condition::unopened, true, u"the server refuses."_s, false,
            u"Could not be opened since 09:14: the server refuses. Its lessons are missing."_s);
        row("a file", Condition::unreadable, true, u"it ends too early."_s, false,
            u"Could not be read since 09:14: it ends too early. Its lessons are missing."_s);
        row("left out", Condition::leftOut, false, u"it is no calendar"_s, true,
            u"Left out, shows its last answer: it is no calendar"_s);
    }

    void aCalendarsProblemIsExplainedInPlainWords()
    {
        QFETCH(Condition, condition);
        QFETCH(bool, isDated);
        QFETCH(QString, reason);
        QFETCH(bool, usesLastAnswer);
        QFETCH(QString, problem);
        const Row row = rowOf(calendarIn(condition, isDated ? std::optional(at("09:14:00")) : std::nullopt,
                                         reason, usesLastAnswer));
        QCOMPARE(row.problem, problem);
        QCOMPARE(row.tone, usesLastAnswer ? Tone::warning : Tone::bad);
    }

    void eachNonLessonEventHasItsReason()
    {
        CalendarEvent allDay = booked(u"Zoom - Anna"_s);
        allDay.isAllDay = true;
        CalendarEvent untitled = booked({});
        untitled.title.reset();
        QCOMPARE(
            texts(notLessonRows({allDay, booked(u"Zoom - Anna"_s), booked(u"Dentist"_s), untitled,
                                 booked(u"Anna"_s), booked(u"Team meeting"_s, "11:00:00", "13:00:00")},
                                parser, QLocale::c())),
            (QStringList{
                u"All day, Zoom - Anna, An all-day event"_s,
                u"10:00 – 10:30, Dentist, A personal word in the title: dentist"_s,
                u"10:00 – 10:30, No platform named, and no title"_s,
                u"11:00 – 13:00, Team meeting, No platform named, and the title speaks of a meeting"_s}));
        QVERIFY(notLessonRows({}, parser, QLocale::c()).empty());
    }

    void logLinesHaveTheUsersTimeOfDay()
    {
        QCOMPARE(texts(logRows({u"2026-11-16T09:56:00.123Z app started"_s, u"no stamp at all"_s, u""_s})),
                 (QStringList{u"09:56:00, app started"_s, u"no stamp at all"_s, QString()}));
    }

    void longListsAreTruncated()
    {
        const std::vector<CalendarEvent> events(1700, booked(u"Dentist"_s));
        const auto rows = notLessonRows(events, parser, QLocale::c());
        QCOMPARE(rows.size(), mostRows + 1);
        QCOMPARE(rowText(rows.back()), u"and 1200 more"_s);
        QCOMPARE(rowText(calendarRows(std::vector(501, calendarIn(Condition::answers)), at("10:00:00"),
                                      QLocale::c())
                             .back()),
                 u"and 1 more"_s);
    }

    void hostileTextsStayShortAndOnOneLine()
    {
        const QString hostile = u"<b>x</b>\u202E\r\n\u0007\u2028"_s.repeated(300'000);
        CalendarStatus status = calendarIn(Condition::unopened, std::nullopt, hostile);
        status.name = hostile;
        status.account = hostile;
        std::vector<Row> rows = calendarRows({status}, at("10:00:00"), QLocale::c());
        rows.push_back(notLessonRows({booked(hostile)}, parser, QLocale::c()).front());
        rows.push_back(logRows({hostile}).front());
        for (const Row &row : rows) {
            const QString text = rowText(row);
            QVERIFY(text.contains(u"<b>x</b> <b>x</b>"_s) && text.size() < 1100);
            for (const QChar c : {u'\n', u'\r', u'\u0007', u'\u202E', u'\u2028'}) {
                QVERIFY(!text.contains(c));
            }
        }
    }

    void theReportCutsNamesAndLeavesOutLinksAndNotes()
    {
        Contents all = reportContents();
        all.events.front().notes = u"secret notes"_s;
        all.events.front().url = QUrl(u"https://secret.example"_s);
        const QString report = text(all, parser, QLocale::c());
        QCOMPARE(report, uR"(Quillet, 2026-11-16T09:57:00.000Z

Now
  Time, Mon 16 Nov 2026 09:57:00
  State, prepare
  Current lesson, None
  Next lesson, A. M. (Zoom)
  Next change, in 2m 0s, at 09:59:00
  Last notification, Finish up B.
  Next notification, None
  Lessons loaded, 1
  Last reload, Loaded 1 lesson(s) for today
  Log file, /home/t/quillet-debug.log

Calendars
  Lessons, 2 events today · last read 09:10 · A.@school.example, No answer since 09:14, shows its last answer: [link] hangs

Not lessons today
  10:00 – 10:30, D. w. C. D., No platform named, and the title is no name: no name has “&”

Log
  2026-11-16T09:56:00.123Z calendar lesson student="A. M." platform="Zoom"
  2026-11-16T09:56:01.000Z event left out title="E. F." reason="no rule"
  2026-11-16T09:56:02.000Z file /x/王..ics
  2026-11-16T09:56:03.000Z calendar lesson student="王." platform="Zoom"
)"_s);
    }

    void aLoggedNameIsCutEvenIfItsLessonIsGone()
    {
        Contents all = reportContents();
        all.logLines = {
            u"x notification actually fires state=wrapUp message=\"Finish up Greta Ox\" lessonID=1"_s,
            u"x about Greta"_s, u"x message=\"Join Hal now\""_s};
        const QString report = text(all, parser, QLocale::c());
        QVERIFY(report.contains(u"message=\"Finish up G. O.\""_s));
        QVERIFY(report.contains(u"about G."_s) && report.contains(u"Join H. now"_s));
    }

    void aNameAtTheEndOfATruncatedTextIsCut()
    {
        Contents all = reportContents();
        all.calendars.front().name = u"."_s.repeated(197) + u"Anna Maria"_s;
        all.calendars.front().reason = u"."_s.repeated(192) + u"Anna Maria"_s;
        const QString report = text(all, parser, QLocale::c());
        QVERIFY(!report.contains(u"An"_s));
    }

    void anEmptyReportSaysSo()
    {
        Contents nothing = reportContents();
        nothing.calendars.clear();
        nothing.events.clear();
        nothing.logLines.clear();
        const QString report = text(nothing, parser, QLocale::c());
        QVERIFY(report.contains(u"Calendars\n  No calendars were found.\n"_s));
        QVERIFY(report.contains(u"Not lessons today\n  No event of today was left out.\n"_s));
        QVERIFY(report.endsWith(u"Log\n  Nothing has been logged yet.\n"_s));
    }

    void megabytesAreReportedQuickly()
    {
        Contents all = reportContents();
        const QString megabytes = u"Anna Maria \u202E\n"_s.repeated(200'000);
        all.lessons.resize(300, sampleLesson(megabytes, at("10:00:00"), minutes(25)));
        all.calendars.resize(400, calendarIn(Condition::unopened, std::nullopt, megabytes));
        all.events.resize(1000, booked(megabytes));
        all.logLines.fill(u"x student=\""_s + megabytes, 80);
        const QString report = text(all, parser, QLocale::c());
        QVERIFY(report.size() < 1'000'000);
        QVERIFY(!report.contains(u"Anna"_s));
    }
};

QUILLET_TEST(DebugReportTest, runTest<DebugReportTest>);
#include "DebugReportTest.moc"
