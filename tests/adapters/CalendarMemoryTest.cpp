// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/CalendarMemory.h"
#include "Corvane/Platform/Linux/EvolutionData/FolderListing.h"
#include "tests/adapters/CalendarRoom.h"
#include "tests/support/CalendarService.h"
#include "tests/support/Obstacles.h"
#include "tests/support/TestProgram.h"

#include <QDir>
#include <QTest>

#include <unistd.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr double oneDay = 86400;

RememberedCalendar remembered(const QString &identifier)
{
    return {identifier, u"Anna"_s, {}, testDay().start, {testDay().start, testDay(8).start}, {}};
}

} // namespace

/// The last answer of a calendar file stands in while the file cannot be read, even after a restart.
class CalendarMemoryTest : public QObject {
    Q_OBJECT

    std::unique_ptr<CalendarRoom> m_room;

    [[nodiscard]] QString path(const QString &name) const { return m_room->path(name); }
    [[nodiscard]] QString memoryFolder() const { return m_room->memoryFolder(); }
    [[nodiscard]] QStringList memoryFiles() const { return m_room->memoryFiles(); }
    void write(const QString &name, const QByteArray &text) const { m_room->write(name, text); }
    void start() { m_room->startOnFolders(); }
    [[nodiscard]] QStringList load(int daysLater = 0) { return m_room->load(daysLater); }
    [[nodiscard]] CalendarStatus status() const { return m_room->monitor().calendars().at(0); }

    /// Loads successfully and waits until the answer is remembered on disk.
    void loadAndRemember(const QByteArray &components)
    {
        m_room->writeEvents(u"a.ics"_s, components);
        start();
        QVERIFY(!load().isEmpty());
        QTRY_COMPARE(memoryFiles().size(), 1);
    }

    /// Truncates the file to half its size.
    void cutOff()
    {
        QFile file(path(u"a.ics"_s));
        QVERIFY(file.resize(file.size() / 2));
    }

private Q_SLOTS:
    void init() { m_room = std::make_unique<CalendarRoom>(); }
    void cleanup() { m_room.reset(); }

    void theLastAnswerStandsInForATruncatedFile()
    {
        loadAndRemember(lesson("Zoom - Anna"));
        cutOff();
        QCOMPARE(load(), QStringList{u"Zoom - Anna"_s});
        QVERIFY(status().usesLastAnswer);
        QVERIFY(!status().isGap());
        QCOMPARE(m_room->logged(u"usesLastAnswer=yes"_s), 1);
        const auto since = status().failingSince;
        QVERIFY(since.has_value());
        QTRY_VERIFY(currentDate() > *since);
        QCOMPARE(load(), QStringList{u"Zoom - Anna"_s});
        QCOMPARE(status().failingSince, since);
    }

    void theLastAnswerStandsInAfterARestart()
    {
        loadAndRemember(lesson("Zoom - Anna"));
        cutOff();
        start();
        QCOMPARE(load(), QStringList{u"Zoom - Anna"_s});
        QVERIFY(status().lastRead.has_value());
    }

    void theLastAnswerStandsInForAFileThatIsNoLongerACalendar()
    {
        loadAndRemember(lesson("Zoom - Anna"));
        write(u"a.ics"_s, "garbage");
        start();
        QCOMPARE(load(), QStringList{u"Zoom - Anna"_s});
    }

    void theNextSevenDaysAreRemembered()
    {
        loadAndRemember(lesson("Zoom - Anna", "RRULE:FREQ=DAILY\n") +
                        lesson("Zoom - Ben").replace("20250514", "20250521") +
                        lesson("Zoom - Cleo").replace("20250514", "20250522"));
        cutOff();
        start();
        QCOMPARE(load(1), QStringList{u"Zoom - Anna"_s});
        QCOMPARE(load(7), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s}));
    }

    void otherDaysAreNotRemembered()
    {
        loadAndRemember(lesson("Zoom - Anna", "RRULE:FREQ=DAILY\n"));
        cutOff();
        start();
        QVERIFY(load(8).value(0).startsWith(u"failed"_s));
        QVERIFY(load(-1).value(0).startsWith(u"failed"_s));
    }

    void movedAndCancelledInstancesAreRemembered()
    {
        loadAndRemember(
            lesson("Zoom - Anna", "RRULE:FREQ=DAILY;COUNT=3\nEXDATE:20250516T120000Z\n") +
            "BEGIN:VEVENT\nUID:Zoom---Anna\nDTSTAMP:20250101T000000Z\nRECURRENCE-ID:20250515T120000Z\n"
            "DTSTART:20250516T140000Z\nDTEND:20250516T143000Z\nSUMMARY:Zoom - Anna moved\nEND:VEVENT\n");
        cutOff();
        start();
        QCOMPARE(load(1), QStringList());
        QCOMPARE(load(2), QStringList{u"Zoom - Anna moved"_s});
    }

    void floatingTimesFollowTheCurrentTimeZone()
    {
        loadAndRemember(lesson("Zoom - Anna").replace("0000Z", "0000").replace("3000Z", "3000"));
        cutOff();
        m_room->setTimeZone("Europe/Berlin");
        start();
        const auto events = QCoro::waitFor(m_room->store().events(testDay()));
        QVERIFY(events && events->size() == 1);
        QCOMPARE(events->at(0).startDate, testDay().start + Seconds{10 * 3600});
    }

    void aDefinedZoneIsRemembered()
    {
        loadAndRemember("BEGIN:VTIMEZONE\nTZID:Four hours\nBEGIN:STANDARD\nDTSTART:19700101T000000\n"
                        "TZOFFSETFROM:+0400\nTZOFFSETTO:+0400\nEND:STANDARD\nEND:VTIMEZONE\n" +
                        lesson("Zoom - Anna")
                            .replace("DTSTART:20250514T120000Z", "DTSTART;TZID=Four hours:20250514T120000")
                            .replace("DTEND:20250514T123000Z", "DTEND;TZID=Four hours:20250514T123000"));
        cutOff();
        start();
        const auto events = QCoro::waitFor(m_room->store().events(testDay()));
        QVERIFY(events && events->size() == 1);
        QCOMPARE(events->at(0).startDate, testDay().start + Seconds{8 * 3600});
    }

    void onlyAChangeIsWritten()
    {
        loadAndRemember(lesson("Zoom - Anna"));
        const QString file = memoryFolder() + u'/' + memoryFiles().at(0);
        const QDateTime written = QFileInfo(file).lastModified();
        QCOMPARE(load(), QStringList{u"Zoom - Anna"_s});
        QCOMPARE(status().condition, CalendarStatus::Condition::answers);
        QCOMPARE(load(), QStringList{u"Zoom - Anna"_s});
        QCOMPARE(QFileInfo(file).lastModified(), written);
        write(u"a.ics"_s, calendarText(lesson("Zoom - Ben")));
        QCOMPARE(load(), QStringList{u"Zoom - Ben"_s});
        QTRY_VERIFY(QFileInfo(file).lastModified() != written);
        cutOff();
        start();
        QCOMPARE(load(), QStringList{u"Zoom - Ben"_s});
    }

    void onlyTheUserCanReadTheMemory()
    {
        loadAndRemember(lesson("Zoom - Anna"));
        const auto others = QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther |
                            QFile::ExeGroup | QFile::ExeOther;
        QCOMPARE(QFile::permissions(memoryFolder()) & others, QFile::Permissions());
        QCOMPARE(QFile::permissions(memoryFolder() + u'/' + memoryFiles().at(0)) & others,
                 QFile::Permissions());
    }

    void aFileThatIsNotRegularIsLeftAlone_data() { obstacles::addRows(); }

    void aFileThatIsNotRegularIsLeftAlone()
    {
        QFETCH(obstacles::Kind, kind);
        const CalendarMemory memory(memoryFolder());
        RememberedCalendar calendar;
        calendar.identifier = u"a"_s;
        QVERIFY(memory.write(calendar));
        const QString path = memoryFolder() + u'/' + memoryFiles().at(0);
        QVERIFY(QFile::remove(path));
        const auto obstacle = obstacles::put(kind, path);
        QVERIFY(!memory.read(u"a"_s));
        QVERIFY(memory.readAll(QString()).empty());
        const auto written = memory.write(calendar);
        QVERIFY(!written);
        QVERIFY(written.error().localizedDescription.startsWith(u"it is "_s));
        if (!QFileInfo(path).isSymLink()) {
            memory.forget(u"a"_s);
        }
        QVERIFY(obstacle.isUntouched());
    }

    void aRemovedFileIsForgotten()
    {
        loadAndRemember(lesson("Zoom - Anna"));
        QVERIFY(QFile::remove(path(u"a.ics"_s)));
        QCOMPARE(load(), QStringList());
        QTRY_COMPARE(memoryFiles().size(), 0);
    }

    void aDamagedMemoryIsIgnored_data()
    {
        QTest::addColumn<QByteArray>("damage");
        QTest::newRow("truncated") << QByteArray();
        QTest::newRow("changed") << QByteArray("Zoom - Eve!");
        QTest::newRow("another version") << QByteArray("9");
    }

    void aDamagedMemoryIsIgnored()
    {
        QFETCH(const QByteArray, damage);
        loadAndRemember(lesson("Zoom - Anna"));
        QFile file(memoryFolder() + u'/' + memoryFiles().at(0));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QByteArray bytes = file.readAll();
        if (damage.isEmpty()) {
            bytes.chop(10);
        } else if (damage.size() == 1) {
            bytes.replace("memory 1", "memory " + damage);
        } else {
            bytes.replace("Zoom - Anna", damage);
        }
        file.resize(0);
        file.seek(0);
        file.write(bytes);
        file.close();
        cutOff();
        start();
        QVERIFY(load().value(0).startsWith(u"failed"_s));
        QVERIFY(status().isGap());
    }

    void withoutAMemoryAGapIsReportedAndOtherLessonsAreShown()
    {
        write(u"a.ics"_s, calendarText(lesson("Zoom - Anna")));
        cutOff();
        write(u"b.ics"_s, calendarText(lesson("Zoom - Ben")));
        start();
        QCOMPARE(load(), QStringList{u"Zoom - Ben"_s});
        QVERIFY(status().isGap());
        QCOMPARE(status().condition, CalendarStatus::Condition::unreadable);
        QCOMPARE(status().name, u"a.ics"_s);
        QVERIFY(status().failingSince.has_value());
    }

    void anEmptyCalendarDoesNotHideAGap()
    {
        m_room->writeEvents(u"a.ics"_s, lesson("Zoom - Anna"));
        cutOff();
        m_room->writeEvents(u"b.ics"_s, {});
        start();
        QCOMPARE(load(), QStringList());
        QVERIFY(m_room->monitor().gap().startsWith(u"The calendar \"a.ics\" did not answer: "_s));
        m_room->writeEvents(u"a.ics"_s, lesson("Zoom - Anna"));
        QCOMPARE(load(), QStringList{u"Zoom - Anna"_s});
        QCOMPARE(m_room->monitor().gap(), QString());
    }

    void aFileThatIsNotACalendarIsNoGap()
    {
        write(u"a.ics"_s, "garbage");
        start();
        for (int round = 0; round < 3; ++round) {
            QCOMPARE(load(), QStringList());
            QCOMPARE(status().condition, CalendarStatus::Condition::leftOut);
        }
        QCOMPARE(m_room->logged(u"calendar file left out"_s), 1);
        QCOMPARE(m_room->logged(u"did not answer"_s), 0);
    }

    void aFailedWriteIsRepeatedLater()
    {
        write(u"a.ics"_s, calendarText(lesson("Zoom - Anna")));
        QVERIFY(QDir().mkpath(path(u"../state"_s)));
        QFile obstacle(memoryFolder());
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        start();
        QCOMPARE(load(), QStringList{u"Zoom - Anna"_s});
        QTRY_COMPARE(m_room->logged(u"calendar not remembered"_s), 1);
        QVERIFY(obstacle.remove());
        QTRY_COMPARE((static_cast<void>(load()), memoryFiles().size()), 1);
        QCOMPARE(m_room->logged(u"calendar not remembered"_s), 1);
    }

    void aMemoryBelongsToOneCalendar()
    {
        const CalendarMemory memory(memoryFolder());
        QVERIFY(memory.write(remembered(u"service:anna"_s)).has_value());
        const QString anna = memoryFolder() + u'/' + memoryFiles().at(0);
        QVERIFY(QFile::rename(anna, anna + u".kept"_s));
        QVERIFY(memory.write(remembered(u"service:ben"_s)).has_value());
        const QString ben = memoryFolder() + u'/' + memoryFiles().at(0);
        QVERIFY(QFile::remove(ben));
        QVERIFY(QFile::rename(anna + u".kept"_s, ben));
        QCOMPARE(memory.read(u"service:ben"_s), std::nullopt);
    }

    void aMemoryThatGrowsTooLargeIsForgotten()
    {
        const CalendarMemory memory(memoryFolder());
        RememberedCalendar calendar = remembered(u"service:anna"_s);
        QVERIFY(memory.write(calendar).has_value());
        calendar.text = QByteArray(CalendarMemory::maximumTextSize + 1, 'a');
        QVERIFY(!memory.write(calendar).has_value());
        QCOMPARE(memoryFiles(), QStringList());
    }

    void theCalendarsOfOneSourceAreReadTogether()
    {
        const CalendarMemory memory(memoryFolder());
        QVERIFY(memory.write(remembered(u"service:anna"_s)).has_value());
        QVERIFY(memory.write(remembered(u"file:/anna.ics"_s)).has_value());
        QCOMPARE(memory.readAll(u"service:"_s), std::vector{remembered(u"service:anna"_s)});
    }

    void anExpiredMemoryIsForgotten()
    {
        const CalendarMemory memory(memoryFolder());
        const Date now = currentDate();
        const auto remembered = [now](const QString &name, double daysAgo) {
            const Date read = now - Seconds{daysAgo * oneDay};
            return RememberedCalendar{
                u"service:"_s + name, name, {}, read, {read, read + Seconds{8 * oneDay}}, {}};
        };
        QVERIFY(memory.write(remembered(u"old"_s, 11)).has_value());
        QVERIFY(memory.write(remembered(u"new"_s, 7)).has_value());
        memory.forgetExpired(now);
        QCOMPARE(memoryFiles().size(), 1);
        QVERIFY(memory.read(u"service:new"_s).has_value());
    }

    void filesInAnUnreadableFolderAreUnknown()
    {
        FolderListing listing;
        listing.errors.emplace("/calendars/school", u"denied"_s);
        QVERIFY(listing.isUnknown("/calendars/school/a.ics"));
        QVERIFY(listing.isUnknown("/calendars/school"));
        QVERIFY(!listing.isUnknown("/calendars/schools/a.ics"));
        QVERIFY(!listing.isUnknown("/calendars/b.ics"));
    }

    void aTooLargeCalendarIsNotRemembered()
    {
        QByteArray components;
        for (int number = 0; number < 100; ++number) {
            components += lesson("Zoom - " + QByteArray::number(number),
                                 "DESCRIPTION:" + QByteArray(60'000, 'a') + "\n");
        }
        write(u"a.ics"_s, calendarText(components));
        start();
        QCOMPARE(load().size(), 100);
        QTRY_COMPARE(m_room->logged(u"calendar not remembered"_s), 1);
        QCOMPARE(memoryFiles().size(), 0);
    }
};

QUILLET_TEST(CalendarMemoryTest, runTest<CalendarMemoryTest>);
#include "CalendarMemoryTest.moc"
