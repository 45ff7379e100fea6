// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/ExpandedText.h"

#include "tests/adapters/CalendarRoom.h"
#include "tests/support/CalendarService.h"
#include "tests/support/TestProgram.h"

#include <QTest>

#include <algorithm>
#include <iterator>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

Expansion expand(const std::vector<QByteArray> &texts, const ExpansionRequest &asked = testRequest())
{
    return expandTexts(texts, asked);
}

QStringList sortedTitles(const Expansion &expansion)
{
    QStringList found = titles(expansion);
    found.sort();
    return found;
}

QByteArray eventText(const QByteArray &title, const QByteArray &more = {}, const QByteArray &uid = {})
{
    return "BEGIN:VEVENT\nUID:" + (uid.isEmpty() ? title : uid) +
           "\nDTSTART:20250514T120000Z\nDTEND:20250514T123000Z\nSUMMARY:" + title + '\n' + more +
           "END:VEVENT\n";
}

/// A revision of the event "a".
QByteArray revision(const QByteArray &title, int sequence, const QByteArray &stamp,
                    const QByteArray &more = {})
{
    return calendarText(eventText(
        title, "SEQUENCE:" + QByteArray::number(sequence) + "\nDTSTAMP:" + stamp + '\n' + more, "a"));
}

constexpr auto early = "20250101T000000Z";
constexpr auto late = "20250102T000000Z";

} // namespace

class CalendarExpansionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theHighestSequenceThenTheNewestStampWins()
    {
        const QByteArray first = revision("first", 0, late);
        const QByteArray second = revision("second", 1, early);
        const QByteArray third = revision("third", 1, late);
        QCOMPARE(sortedTitles(expand({first, second})), QStringList{u"second"_s});
        QCOMPARE(sortedTitles(expand({second, first})), QStringList{u"second"_s});
        QCOMPARE(sortedTitles(expand({third, second, first})), QStringList{u"third"_s});
        // The same within one file.
        QCOMPARE(sortedTitles(expand({third + first})), QStringList{u"third"_s});
    }

    void aSeriesOnADayThatDoesNotExistIsNamed_data()
    {
        QTest::addColumn<QByteArray>("times");
        QTest::newRow("start") << QByteArray("DTSTART:20250231T120000Z\nDTEND:20250303T123000Z");
        QTest::newRow("end") << QByteArray("DTSTART:20250226T120000Z\nDTEND:20250231T123000Z");
        QTest::newRow("month") << QByteArray("DTSTART:20251301T120000Z\nDTEND:20251301T123000Z");
    }

    void aSeriesOnADayThatDoesNotExistIsNamed()
    {
        QFETCH(QByteArray, times);
        const Expansion expansion = expand({calendarText(
            "BEGIN:VEVENT\nUID:a\n" + times + "\nRRULE:FREQ=WEEKLY\nSUMMARY:lesson\nEND:VEVENT\n")});
        QCOMPARE(titles(expansion), QStringList());
        QCOMPARE(expansion.skippedEvents.size(), std::size_t{1});
        QCOMPARE(expansion.skippedEvents.front().text,
                 u"title=\"lesson\" reason=\"its times cannot be read\""_s);
    }

    void ofTwoEqualRevisionsTheLaterOneWins()
    {
        QCOMPARE(sortedTitles(expand({revision("one", 1, late), revision("two", 1, late)})),
                 QStringList{u"two"_s});
        QCOMPARE(sortedTitles(expand(
                     {calendarText(eventText("one", {}, "a")), calendarText(eventText("two", {}, "a"))})),
                 QStringList{u"two"_s});
    }

    void aCancellationCountsAsARevision()
    {
        const QByteArray invitation = revision("one", 0, early);
        const QByteArray cancellation = revision("one", 1, late, "STATUS:CANCELLED\n");
        QCOMPARE(sortedTitles(expand({cancellation, invitation})), QStringList());
        QCOMPARE(sortedTitles(expand({cancellation, revision("again", 2, late)})), QStringList{u"again"_s});
    }

    void theCancelMethodCancelsAllEventsOfACalendar()
    {
        const QByteArray invitation = revision("one", 0, early);
        QByteArray cancellation = revision("one", 0, late);
        cancellation.replace("VERSION:2.0", "VERSION:2.0\r\nMETHOD:CANCEL");
        QCOMPARE(sortedTitles(expand({cancellation, invitation})), QStringList());
        QByteArray request = revision("one", 0, late);
        request.replace("VERSION:2.0", "VERSION:2.0\r\nMETHOD:REQUEST");
        QCOMPARE(sortedTitles(expand({request, invitation})), QStringList{u"one"_s});
    }

    void ofTwoRevisionsOfAChangedInstanceTheHigherWins()
    {
        const QByteArray series = calendarText("BEGIN:VEVENT\nUID:a\nDTSTART;TZID=Europe/"
                                               "Berlin:20250507T140000\nDURATION:PT30M\nRRULE:FREQ=WEEKLY\n"
                                               "SUMMARY:series\nEND:VEVENT\n");
        const QByteArray first =
            revision("first", 1, early, "RECURRENCE-ID;TZID=Europe/Berlin:20250514T140000\n");
        // The same instance, identified in UTC.
        const QByteArray second = revision("second", 2, early, "RECURRENCE-ID:20250514T120000Z\n");
        QCOMPARE(sortedTitles(expand({second, series, first})), QStringList{u"second"_s});
        const QByteArray cancelled =
            revision("third", 3, late, "STATUS:CANCELLED\nRECURRENCE-ID:20250514T120000Z\n");
        QCOMPARE(sortedTitles(expand({cancelled, series, first})), QStringList());
    }

    void cancellingASeriesCancelsItsOlderChangedInstances()
    {
        const QByteArray changed = revision("changed", 1, early, "RECURRENCE-ID:20250514T110000Z\n");
        const QByteArray cancelled = revision("a", 2, late, "RRULE:FREQ=WEEKLY\nSTATUS:CANCELLED\n");
        QCOMPARE(sortedTitles(expand({changed, cancelled})), QStringList());
        const QByteArray newer = revision("newer", 3, late, "RECURRENCE-ID:20250514T110000Z\n");
        QCOMPARE(sortedTitles(expand({newer, cancelled})), QStringList{u"newer"_s});
    }

    void zonesWithTheSameNameInTwoFilesAreDistinguished()
    {
        const auto inZone = [](const QByteArray &title, const QByteArray &offset) {
            return calendarText(
                "BEGIN:VTIMEZONE\nTZID:Custom\nBEGIN:STANDARD\nDTSTART:19700101T000000\nTZOFFSETFROM:" +
                offset + "\nTZOFFSETTO:" + offset + "\nEND:STANDARD\nEND:VTIMEZONE\nBEGIN:VEVENT\nUID:" +
                title + "\nDTSTART;TZID=Custom:20250514T120000\nSUMMARY:" + title + "\nEND:VEVENT\n");
        };
        const Expansion expansion = expand({inZone("one", "+0100"), inZone("two", "+0200")});
        QCOMPARE(expansion.events.size(), std::size_t{2});
        QCOMPARE(expansion.events[0].startDate, testDay().start + Seconds{11 * 3'600});
        QCOMPARE(expansion.events[1].startDate, testDay().start + Seconds{10 * 3'600});
        QVERIFY(expansion.unknownZones.empty());
    }

    void unknownZoneNamesAreReported()
    {
        const Expansion expansion = expand(
            {calendarText("BEGIN:VEVENT\nUID:a\nDTSTART;TZID=Atlantis/Capital:20250514T120000\nSUMMARY:a\n"
                          "END:VEVENT\nBEGIN:VEVENT\nUID:b\nDTSTART;TZID=UTC:20250514T120000\nSUMMARY:b\n"
                          "END:VEVENT\n")});
        QCOMPARE(expansion.unknownZones, std::set<QByteArray>{"Atlantis/Capital"});
        QCOMPARE(sortedTitles(expansion), (QStringList{u"a"_s, u"b"_s}));
    }

    void anEventWithoutAStartIsNamed()
    {
        const Expansion expansion =
            expand({calendarText("BEGIN:VEVENT\nUID:a\nSUMMARY:a\nEND:VEVENT\n"
                                 "BEGIN:VEVENT\nUID:b\nDTSTART:soon\nSUMMARY:b\nEND:VEVENT\n")});
        QVERIFY(expansion.events.empty());
        QCOMPARE(expansion.skippedEvents.size(), std::size_t{2});
        QCOMPARE(expansion.skippedEvents[0].text,
                 u"title=\"a\" reason=\"it does not tell when it begins\""_s);
        QCOMPARE(expansion.skippedEvents[1].text, u"title=\"b\" reason=\"its DTSTART cannot be read\""_s);
    }

    void unreadablePropertiesAreNamed()
    {
        const Expansion expansion =
            expand({calendarText(eventText("rule", "RRULE:FREQ=SOMETIMES\n") +
                                 eventText("dates", "EXDATE:whenever\n") + eventText("good"))});
        QCOMPARE(sortedTitles(expansion), (QStringList{u"dates"_s, u"good"_s, u"rule"_s}));
        QCOMPARE(expansion.skippedEvents.size(), std::size_t{2});
        QCOMPARE(expansion.skippedEvents.front().text,
                 u"title=\"rule\" reason=\"its RRULE cannot be read\""_s);
    }
};

QUILLET_TEST(CalendarExpansionTest, runTest<CalendarExpansionTest>);
#include "CalendarExpansionTest.moc"
