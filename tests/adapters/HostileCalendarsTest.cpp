// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/CalendarFoldersFixture.h"
#include "tests/support/CalendarService.h"
#include "tests/support/EventLoopWatch.h"
#include "tests/support/TestProgram.h"

#include <QFile>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

/// Calendar files that are damaged, huge or made to harm.
class HostileCalendarsTest final : public CalendarFoldersFixture {
    Q_OBJECT

private Q_SLOTS:
    void garbageIsLoggedOnceAndLeftOut()
    {
        writeLessons(u"a.ics"_s, {lesson("Zoom - One")});
        write(u"garbage.ics"_s, QByteArray("\x00\xff\xfe not a calendar\n\n:::;;;", 26));
        write(u"empty.ics"_s, QByteArray());
        write(u"other.ics"_s, QByteArray("BEGIN:VCARD\r\nFN:Anna\r\nEND:VCARD\r\n"));
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        QCOMPARE(logged(u"calendar file left out"_s), 3);
    }

    void aRepairedFileIsShown()
    {
        write(u"a.ics"_s, QByteArray("garbage"));
        QCOMPARE(load(), QStringList());
        writeLessons(u"a.ics"_s, {lesson("Zoom - One")});
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        QCOMPARE(logged(u"calendar file read again"_s), 1);
    }

    void aFileThatCannotBeReadIsLoggedAndLeftOut()
    {
        writeLessons(u"a.ics"_s, {lesson("Zoom - One")});
        // Not readable even for root: address 0 of a process's memory is not mapped.
        QVERIFY(QFile::link(u"/proc/self/mem"_s, path(u"mem.ics"_s)));
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        QCOMPARE(logged(u"calendar did not answer name=\"mem.ics\" step=\"read\""_s), 1);
    }

    void aFileOfAHundredMegabytesIsLoggedAndLeftOut()
    {
        writeLessons(u"a.ics"_s, {lesson("Zoom - One")});
        QFile large(path(u"large.ics"_s));
        QVERIFY(large.open(QIODevice::WriteOnly));
        const QByteArray block = lesson("Zoom - Again").repeated(5000);
        large.write("BEGIN:VCALENDAR\r\nVERSION:2.0\r\n");
        while (large.size() < 100'000'000) {
            QVERIFY(large.write(block) > 0);
        }
        large.close();
        EventLoopWatch watch;
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        QVERIFY2(watch.longestGap() < EventLoopWatch::blockedThreshold,
                 qPrintable(QString::number(watch.longestGap())));
        QCOMPARE(logged(u"it is too large"_s), 1);
    }

    void readingALargeCalendarDoesNotBlockTheEventLoop()
    {
        writeLessons(u"a.ics"_s, {lesson("Zoom - One")});
        QByteArray years;
        for (int number = 0; number < 40'000; ++number) {
            years += "BEGIN:VEVENT\nUID:many-" + QByteArray::number(number) +
                     "\nDTSTART:20240514T120000Z\n"
                     "DTEND:20240514T123000Z\nDESCRIPTION:" +
                     QByteArray(300, 'x') + "\nSUMMARY:Zoom - Past\nEND:VEVENT\n";
        }
        write(u"many.ics"_s, calendarText(years));
        EventLoopWatch watch;
        QVERIFY(load().contains(u"Zoom - One"_s));
        // Reading takes most of a second.
        QVERIFY2(watch.turns() >= 10, qPrintable(QString::number(watch.turns())));
    }

    void endlessRulesAreLoggedOnceAndLeftOut_data()
    {
        QTest::addColumn<QByteArray>("rule");
        const char *const longLists =
            "FREQ=DAILY;BYHOUR=0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23;"
            "BYMINUTE=0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26,27,28,29,30;"
            "BYMONTH=2;BYMONTHDAY=30";
        for (const char *rule :
             {"FREQ=SECONDLY", "FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30",
              "FREQ=MINUTELY;BYMONTH=2;BYMONTHDAY=30", "FREQ=MINUTELY", "FREQ=HOURLY;BYMONTH=2;BYMONTHDAY=30",
              "FREQ=HOURLY;INTERVAL=24;BYHOUR=9", "FREQ=HOURLY", "FREQ=SECONDLY;COUNT=2000000000",
              "FREQ=MINUTELY;INTERVAL=1440;BYHOUR=3", longLists}) {
            QTest::newRow(rule) << QByteArray(rule);
        }
    }

    void endlessRulesAreLoggedOnceAndLeftOut()
    {
        QFETCH(QByteArray, rule);
        writeLessons(u"a.ics"_s,
                     {lesson("Zoom - One"),
                      "BEGIN:VEVENT\nUID:endless\nDTSTART:19700101T000000Z\nDTEND:19700101T000001Z\nRRULE:" +
                          rule + "\nSUMMARY:Zoom - Endless\nEND:VEVENT\n",
                      lesson("Zoom - Two")});
        EventLoopWatch watch;
        QCOMPARE(load(), (QStringList{u"Zoom - One"_s, u"Zoom - Two"_s}));
        QVERIFY2(watch.longestGap() < EventLoopWatch::blockedThreshold,
                 qPrintable(QString::number(watch.longestGap())));
        QCOMPARE(load(), (QStringList{u"Zoom - One"_s, u"Zoom - Two"_s}));
        QCOMPARE(logged(u"Zoom - Endless"_s), 1);
    }

    void anEventThatFillsTheDayIsLoggedOnceAndLeftOut()
    {
        writeLessons(u"a.ics"_s,
                     {lesson("Zoom - One"),
                      "BEGIN:VEVENT\nUID:flood\nDTSTART:20250514T000000Z\nDTEND:20250514T000100Z\n"
                      "RRULE:FREQ=MINUTELY\nSUMMARY:Zoom - Flood\nEND:VEVENT\n"});
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        QCOMPARE(logged(u"Zoom - Flood"_s), 1);
    }

    void anEventIsShownOnceItsRuleIsRepaired()
    {
        const QByteArray start =
            "BEGIN:VEVENT\nUID:endless\nDTSTART:20200101T120000Z\nDTEND:20200101T123000Z\nRRULE:FREQ=";
        writeLessons(u"a.ics"_s, {start + "SECONDLY\nSUMMARY:Zoom - Endless\nEND:VEVENT\n"});
        QCOMPARE(load(), QStringList());
        writeLessons(u"a.ics"_s, {start + "DAILY\nSUMMARY:Zoom - Endless\nEND:VEVENT\n"});
        QCOMPARE(load(), QStringList{u"Zoom - Endless"_s});
    }

    void theExpansionOfRulesThatNeverMatchEnds()
    {
        for (const char *rule : {"FREQ=DAILY;BYMONTH=2;BYMONTHDAY=30", "FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30",
                                 "FREQ=MONTHLY;BYMONTHDAY=31;BYMONTH=2"}) {
            writeLessons(u"a.ics"_s, {lesson("Zoom - One"),
                                      "BEGIN:VEVENT\nUID:never\nDTSTART:19700101T000000Z\nRRULE:" +
                                          QByteArray(rule) + "\nSUMMARY:Zoom - Never\nEND:VEVENT\n"});
            // On a busy machine it may take more than one load.
            QTRY_VERIFY_WITH_TIMEOUT(load().contains(u"Zoom - One"_s), 20'000);
        }
    }

    void tooManyOccurrencesAreLoggedAndLeftOut()
    {
        writeLessons(u"a.ics"_s,
                     {lesson("Zoom - One"), lesson("Zoom - Often", "RRULE:FREQ=SECONDLY;COUNT=20000\n")});
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        QCOMPARE(logged(u"Zoom - Often"_s), 1);
    }

    void aTitleOfAMillionCharactersIsLoggedOnceAndLeftOut()
    {
        writeLessons(u"a.ics"_s, {lesson("Zoom - One"), lesson("Zoom - " + QByteArray(1'000'000, 'a'))});
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        QCOMPARE(logged(u"its title is too long"_s), 1);
        QVERIFY(m_room->logLines().last().size() < 500);
    }

    void longNotesAreReadAndCut()
    {
        // The library alone would take a minute for this line.
        writeLessons(u"a.ics"_s, {lesson("Zoom - One", "DESCRIPTION:" + QByteArray(5'000'000, 'n') + "\n")});
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        const auto events = QCoro::waitFor(m_room->store().events(testDay()));
        QCOMPARE(events.value().front().notes.value().size(), 65'536);
    }

    void controlCharactersAreKeptAndBreakNoLogLine()
    {
        writeLessons(u"a.ics"_s,
                     {lesson("Zoom - \x01\x1b[31m\tAnna\x7f"),
                      "BEGIN:VEVENT\nUID:e\nDTSTART:19700101T000000Z\nRRULE:FREQ=SECONDLY\nSUMMARY:"
                      "two\\nlines \" \x1b[0m\n"
                      "END:VEVENT\n"});
        const QStringList titles = load();
        QCOMPARE(titles.size(), 1);
        QVERIFY(titles.first().contains(u"Anna"_s));
        const QString line = m_room->logLines().filter(u"left out"_s).value(0);
        QVERIFY(!line.isEmpty());
        QVERIFY(!line.contains(u'\n') && !line.contains(u'\x1b'));
    }

    void anUnknownTimeZoneIsLoggedOnce()
    {
        writeLessons(u"a.ics"_s, {lesson("Zoom - One")
                                      .replace("DTSTART:20250514T120000Z",
                                               "DTSTART;TZID=Nowhere at all:20250514T120000")});
        for (int round = 0; round < 3; ++round) {
            QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        }
        QCOMPARE(logged(u"unknown time zone calendar=\"a.ics\" zone=\"Nowhere at all\""_s), 1);
    }

    void deepNestingIsLeftOut()
    {
        writeLessons(u"a.ics"_s, {lesson("Zoom - One")});
        write(u"deep.ics"_s, QByteArray("BEGIN:VEVENT\r\n").repeated(200'000));
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        QCOMPARE(logged(u"nested too deeply"_s), 1);
    }

    void aFileCutOffAtAnyByteDoesNotCrashTheProgram()
    {
        const QByteArray whole = calendarText(
            "BEGIN:VTIMEZONE\nTZID:Own\nBEGIN:STANDARD\nDTSTART:19700101T000000\nTZOFFSETFROM:+"
            "0000\nTZOFFSETTO:+0100\n"
            "END:STANDARD\nEND:VTIMEZONE\nBEGIN:VEVENT\nUID:a\nDTSTART;TZID=Own:20250514T120000\nDURATION:"
            "PT30M\n"
            "RRULE:FREQ=WEEKLY;BYDAY=WE;UNTIL=20260101T000000Z\nEXDATE;TZID=Own:20250521T120000\n"
            "RDATE:20250515T120000Z\nSUMMARY:Zoom - \\n\\, "
            "课\nURL:https://zoom.us/j/1\nEND:VEVENT\nBEGIN:VEVENT\nUID:a\n"
            "RECURRENCE-ID;TZID=Own;RANGE=THISANDFUTURE:20250528T120000\nDTSTART;TZID=Own:"
            "20250528T130000\nEND:VEVENT\n");
        writeLessons(u"good.ics"_s, {lesson("Zoom - Good")});
        for (qsizetype length = 0; length <= whole.size(); ++length) {
            write(u"cut.ics"_s, whole.left(length));
            QVERIFY2(load().contains(u"Zoom - Good"_s), qPrintable(QString::number(length)));
        }
        QVERIFY(load().contains(u"Zoom - \n, 课"_s));
    }
};

QUILLET_TEST(HostileCalendarsTest, runTest<HostileCalendarsTest>);
#include "HostileCalendarsTest.moc"
