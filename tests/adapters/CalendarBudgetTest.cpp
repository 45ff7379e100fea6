// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/ExpandedText.h"

#include "Corvane/Platform/Linux/EvolutionData/CalendarCapture.h"
#include "tests/support/CalendarService.h"
#include "tests/support/TestProgram.h"

#include <QTest>

#include <sys/resource.h>

#include <algorithm>
#include <ctime>
#include <iterator>
#include <semaphore>
#include <thread>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

/// Limits for a hostile calendar: CPU time in milliseconds (without a budget each of these takes minutes) and
/// growth of the program's peak memory in kilobytes. Under the sanitizers code runs twenty times slower and
/// freed memory is kept.
#ifdef __SANITIZE_ADDRESS__
constexpr std::clock_t longest = 120'000;
constexpr long largest = 900'000;
#else
constexpr std::clock_t longest = 3'000;
constexpr long largest = 60'000;
#endif

QByteArray single(const QByteArray &title, const QByteArray &more = {})
{
    return "BEGIN:VEVENT\nUID:" + title +
           "\nDTSTART:20250514T120000Z\nDTEND:20250514T123000Z\nSUMMARY:" + title + '\n' + more +
           "END:VEVENT\n";
}

QByteArray series(const QByteArray &title, const QByteArray &rules)
{
    return "BEGIN:VEVENT\nUID:" + title + "\nDTSTART:20250101T120000Z\nDTEND:20250101T120100Z\n" + rules +
           "SUMMARY:" + title + "\nEND:VEVENT\n";
}

long peakMemory()
{
    struct rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

Expansion expandComponents(const QByteArray &components, const ExpansionRequest &asked = testRequest())
{
    return expandTexts({calendarText(components)}, asked);
}

QStringList reasons(const Expansion &expansion)
{
    QStringList found;
    for (const SkippedEvent &skipped : expansion.skippedEvents) {
        found << skipped.text;
    }
    return found;
}

} // namespace

class CalendarBudgetTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aHostileCalendarCostsNextToNothing_data()
    {
        QTest::addColumn<QByteArray>("components");
        const QByteArray dense = "RRULE:FREQ=MINUTELY;INTERVAL=10\n";
        const QByteArray notes = "DESCRIPTION:" + QByteArray(1'000'000, 'n') + '\n';
        QTest::newRow("300 rules") << series("hostile", QByteArray("RRULE:FREQ=HOURLY\n").repeated(300));
        QTest::newRow("300 exclusions")
            << series("hostile", "RRULE:FREQ=DAILY\n" + QByteArray("EXRULE:FREQ=HOURLY\n").repeated(300));
        QTest::newRow("a repeating changed instance") << series(
            "hostile", "RECURRENCE-ID:20250514T120000Z\n" + QByteArray("RRULE:FREQ=HOURLY\n").repeated(300));
        QTest::newRow("no start") << QByteArray(
            "BEGIN:VEVENT\nUID:a\nDTEND:20250514T123000Z\nRRULE:FREQ=WEEKLY\nSUMMARY:hostile\nEND:VEVENT\n");
        QTest::newRow("a start long ago") << QByteArray(
            "BEGIN:VEVENT\nUID:a\nDTSTART:00010101T120000Z\nRRULE:FREQ=DAILY\nSUMMARY:hostile\nEND:VEVENT\n");
        QTest::newRow("an end far ahead") << QByteArray(
            "BEGIN:VEVENT\nUID:a\nDTSTART:02500115T110000Z\nDTEND:20250115T113000Z\nRRULE:FREQ=WEEKLY\n"
            "SUMMARY:hostile\nEND:VEVENT\n");
        QTest::newRow("an end in an invalid month") << QByteArray(
            "BEGIN:VEVENT\nUID:a\nDTSTART:20250115T110000Z\nDTEND:20259115T113000Z\nRRULE:FREQ=WEEKLY\n"
            "SUMMARY:hostile\nEND:VEVENT\n");
        QTest::newRow("a long duration") << QByteArray(
            "BEGIN:VEVENT\nUID:a\nDTSTART:20250514T110000Z\nDURATION:P99999999W\nSUMMARY:hostile\n"
            "END:VEVENT\n");
        QTest::newRow("a zone of seconds") << QByteArray(
            "BEGIN:VTIMEZONE\nTZID:Hostile\nBEGIN:STANDARD\nDTSTART:19700101T000000\nRRULE:FREQ=SECONDLY\n"
            "TZOFFSETFROM:+0000\nTZOFFSETTO:+0100\nEND:STANDARD\nEND:VTIMEZONE\n"
            "BEGIN:VEVENT\nUID:zoned\nDTSTART;TZID=Hostile:20250514T120000\nSUMMARY:hostile\nEND:VEVENT\n");
        QTest::newRow("a zone of hours in years") << QByteArray(
            "BEGIN:VTIMEZONE\nTZID:Hostile\nBEGIN:STANDARD\nDTSTART:00010101T000000\n"
            "RRULE:FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30;BYHOUR=1,2,3,4,5\n"
            "TZOFFSETFROM:+0000\nTZOFFSETTO:+0100\nEND:STANDARD\nEND:VTIMEZONE\n"
            "BEGIN:VEVENT\nUID:zoned\nDTSTART;TZID=Hostile:20250514T120000\nSUMMARY:hostile\nEND:VEVENT\n");
        QTest::newRow("long notes in dense series")
            << series("one", dense + notes) + series("two", dense + notes) + series("three", dense + notes) +
                   series("four", dense + notes);
        QTest::newRow("many dates") << series(
            "hostile", "EXDATE:20250514T120000Z" + QByteArray(",20250514T120000Z").repeated(300'000) + '\n');
        QByteArray many;
        for (int number = 0; number < 300; ++number) {
            many += series("hostile" + QByteArray::number(number), "RRULE:FREQ=HOURLY\n");
        }
        QTest::newRow("many series") << many;
    }

    void aHostileCalendarCostsNextToNothing()
    {
        QFETCH(QByteArray, components);
        const long before = peakMemory();
        const std::clock_t begin = std::clock(); // CPU time, since other programs may keep the machine busy
        const Expansion expansion = expandComponents(single("innocent") + components + single("another"));
        const QStringList found = titles(expansion);
        QVERIFY(found.contains(u"innocent"_s) && found.contains(u"another"_s));
        const std::clock_t taken = (std::clock() - begin) * 1000 / CLOCKS_PER_SEC;
        QVERIFY2(taken < longest, qPrintable(QString::number(taken)));
        QVERIFY2(peakMemory() - before < largest, qPrintable(QString::number(peakMemory() - before)));
    }

    void eventsBeyondTheLimitsAreNamed()
    {
        const QStringList texts = reasons(
            expandComponents(series("rules", QByteArray("RRULE:FREQ=HOURLY\n").repeated(11)) +
                             series("dates", "RRULE:FREQ=DAILY\nEXDATE:20250514T120000Z" +
                                                 QByteArray(",20250515T120000Z").repeated(10'000) + '\n')));
        QCOMPARE(texts, (QStringList{u"title=\"rules\" reason=\"it has too many rules\""_s,
                                     u"title=\"dates\" reason=\"it lists too many dates\""_s}));
    }

    void theCheapestSeriesAreExpandedFirst()
    {
        ExpansionRequest asked = testRequest();
        asked.budget.steps = 300;
        const Expansion expansion =
            expandComponents(series("hourly", "RRULE:FREQ=HOURLY\n") + series("daily", "RRULE:FREQ=DAILY\n") +
                                 single("single"),
                             asked);
        QCOMPARE(titles(expansion), (QStringList{u"daily"_s, u"single"_s}));
        QCOMPARE(reasons(expansion),
                 QStringList{u"title=\"hourly\" reason=\"its calendar repeats too much altogether\""_s});
        QVERIFY(expansion.isComplete);
    }

    void knownSeriesDoNotChangeTheBudget()
    {
        ExpansionRequest asked = testRequest();
        asked.budget.steps = 300;
        const QByteArray components = series("hourly", "RRULE:FREQ=HOURLY\n") +
                                      series("daily", "RRULE:FREQ=DAILY\n") +
                                      series("every other day", "RRULE:FREQ=DAILY;INTERVAL=7\n");
        const Expansion first = expandComponents(components, asked);
        asked.knownSeries = first.series;
        const Expansion second = expandComponents(components, asked);
        QCOMPARE(titles(second), titles(first));
        QCOMPARE(reasons(second), reasons(first));
    }

    void occurrencesAndTextsBeyondTheBudgetAreLeftOut()
    {
        ExpansionRequest asked = testRequest();
        asked.budget.occurrences = 2;
        const QByteArray three = single("one") + single("two") + single("three");
        QCOMPARE(titles(expandComponents(three, asked)), (QStringList{u"one"_s, u"two"_s}));
        asked = testRequest();
        asked.budget.text = 100;
        const Expansion expansion = expandComponents(
            single("one") + single("two", "DESCRIPTION:" + QByteArray(100, 'n') + '\n') + single("three"),
            asked);
        QCOMPARE(titles(expansion), (QStringList{u"one"_s, u"three"_s}));
        QCOMPARE(expansion.skippedEvents.size(), std::size_t{1});
    }

    void aStuckSeriesIsNamedAndSingleEventsAreKept()
    {
        // Each series is half a second of work.
        const QByteArray dense = "RRULE:FREQ=MINUTELY;INTERVAL=10\n";
        const auto groups = groupsOfTexts({calendarText(
            series("next", dense).replace("20250101", "20220901") +
            series("stuck", dense).replace("20250101", "20221001") + single("one") + single("two"))});
        ExpansionControl control;
        std::binary_semaphore isWatched(0);
        const std::jthread impatient([&](const std::stop_token &end) {
            isWatched.release();
            while (control.busyWith == 0 && !end.stop_requested()) {
                std::this_thread::yield();
            }
            control.cancel();
        });
        isWatched.acquire();
        const Expansion expansion = expandGroups(groups, testRequest(), control);
        QVERIFY(!expansion.isComplete);
        QCOMPARE(titles(expansion), (QStringList{u"one"_s, u"two"_s}));
        QStringList unfinished;
        std::ranges::transform(expansion.unfinishedSeries, std::back_inserter(unfinished),
                               &SkippedEvent::text);
        QCOMPARE(unfinished, (QStringList{u"title=\"stuck\" reason=\"it took too long\""_s,
                                          u"title=\"next\" reason=\"it was not reached in time\""_s}));
    }

    void anInterruptedCaptureIsDiscarded()
    {
        const auto groups =
            groupsOfTexts({calendarText(single("one") + series("daily", "RRULE:FREQ=DAILY\n"))});
        const DateInterval day = testRequest().interval;
        ExpansionControl control;
        const auto whole = captureSpan(groups, {}, testRequest(), day, control);
        QVERIFY(whole && whole->contains("SUMMARY:one") && whole->contains("SUMMARY:daily"));
        control.cancel();
        QVERIFY(!captureSpan(groups, {}, testRequest(), day, control));
    }
};

QUILLET_TEST(CalendarBudgetTest, runTest<CalendarBudgetTest>);
#include "CalendarBudgetTest.moc"
