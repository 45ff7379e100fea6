// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/CalendarRepairs.h"
#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;

class CalendarRepairsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rulesWithAClearMeaningAreRepaired_data()
    {
        QTest::addColumn<QByteArray>("written");
        QTest::addColumn<QByteArray>("read");
        const auto row = [](const char *written, const char *read) {
            QTest::newRow(written) << QByteArray(written) << QByteArray(read);
        };
        row("FREQ=WEEKLY;BYDAY=MO,WE", "FREQ=WEEKLY;BYDAY=MO,WE");
        row("FREQ=WEEKLY;BYDAY=WE,WE", "FREQ=WEEKLY;BYDAY=WE");
        row("freq=weekly; byday=mo, we;", "FREQ=WEEKLY;BYDAY=MO,WE");
        row("FREQ=WEEKLY;X-SOURCE=a;WKST=;BYDAY=WE", "FREQ=WEEKLY;BYDAY=WE");
        row("FREQ=WEEKLY;UNTIL=20250514T1200", "FREQ=WEEKLY;UNTIL=20250514T120000");
        row("FREQ=WEEKLY;UNTIL=20250514", "FREQ=WEEKLY;UNTIL=20250514");
        row("FREQ=SOMETIMES", "FREQ=SOMETIMES");
        row("", "");
    }

    void rulesWithAClearMeaningAreRepaired()
    {
        QFETCH(QByteArray, written);
        QFETCH(QByteArray, read);
        QCOMPARE(repairedRule(written), read);
        QCOMPARE(repairedRule(read), read);
    }

    void timesWithAClearMeaningAreRepaired_data()
    {
        QTest::addColumn<QByteArray>("written");
        QTest::addColumn<QByteArray>("read");
        const auto row = [](const char *written, const char *read) {
            QTest::newRow(written) << QByteArray(written) << QByteArray(read);
        };
        row("20260314", "20260314");
        row("20260314T090000", "20260314T090000");
        row("20260314T090000Z", "20260314T090000Z");
        row("20260314T0900", "20260314T090000");
        row("20260314T0900Z", "20260314T090000Z");
        row("20260314T090000+0100", "20260314T080000Z");
        row("20260314T0030+0100", "20260313T233000Z");
        row("20260314T233000-05:30", "20260315T050000Z");
        row("2026-03-14T09:00:00", "20260314T090000");
        row("2026-03-14 09:00", "20260314T090000");
        row("2026-03-14T09:00:00.250Z", "20260314T090000Z");
        row("20260314T2500", "20260314T2500");
        row("20261314T0900", "20261314T0900");
        row("tomorrow", "tomorrow");
        row("", "");
    }

    void timesWithAClearMeaningAreRepaired()
    {
        QFETCH(QByteArray, written);
        QFETCH(QByteArray, read);
        QCOMPARE(repairedTime(written), read);
    }

    void aTimeWithAnOffsetLosesItsZone()
    {
        const auto lines = repairedLines("DTSTART;VALUE=DATE-TIME;TZID=Europe/Berlin:20260314T090000+0100");
        QCOMPARE(lines, std::vector<QByteArray>{"DTSTART;VALUE=DATE-TIME:20260314T080000Z"});
    }

    void aListOfDatesIsSplitIfNecessary()
    {
        const QByteArray plain = "EXDATE;TZID=Europe/Berlin:20260314T090000,20260321T090000";
        QCOMPARE(repairedLines(plain), std::vector<QByteArray>{plain});
        QCOMPARE(repairedLines("EXDATE;TZID=Europe/Berlin:20260314T0900,20260321T0900+0100"),
                 (std::vector<QByteArray>{"EXDATE;TZID=Europe/Berlin:20260314T090000",
                                          "EXDATE:20260321T080000Z"}));
        const auto many = repairedLines("EXDATE:20260314" + QByteArray(",20260321").repeated(9'000));
        QCOMPARE(many.size(), std::size_t{9'001});
        QCOMPARE(many.back(), QByteArray("EXDATE:20260321"));
    }

    void otherLinesAreUnchanged()
    {
        for (const char *line :
             {"SUMMARY:FREQ=WEEKLY;X-A=1", "DESCRIPTION;X=\"a:b\":DTSTART:1", "nonsense", ""}) {
            QCOMPARE(repairedLines(line), std::vector<QByteArray>{line});
        }
    }

    void anOverlongRuleIsRejected()
    {
        const auto lines = repairedLines("RRULE:FREQ=DAILY;BYHOUR=1" + QByteArray(",2").repeated(10'000));
        QCOMPARE(lines, std::vector<QByteArray>{"RRULE:too long"});
    }
};

QUILLET_TEST(CalendarRepairsTest, runTest<CalendarRepairsTest>);
#include "CalendarRepairsTest.moc"
