// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/SourceCalendar.h"

#include "Corvane/Platform/Linux/EvolutionData/FolderListing.h"
#include "Corvane/Platform/Linux/EvolutionData/IcsFolders.h"
#include "Corvane/Platform/Linux/EvolutionData/MergedEventStore.h"
#include "tests/support/CalendarService.h"
#include "tests/support/Obstacles.h"
#include "tests/support/TestProgram.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

QByteArray lesson(const QByteArray &title, const QByteArray &more = {})
{
    return "BEGIN:VEVENT\nUID:" + title.simplified().replace(' ', '-') +
           "\nDTSTAMP:20250101T000000Z\nDTSTART:20250514T120000Z\nDTEND:20250514T123000Z\n" + more +
           "SUMMARY:" + title + "\nEND:VEVENT\n";
}

constexpr double fourteenthOfMay = 1747180800; // 2025, UTC
constexpr double oneDay = 86400;

DateInterval day(int later)
{
    return {dateSince1970(fourteenthOfMay + later * oneDay),
            dateSince1970(fourteenthOfMay + (later + 1) * oneDay)};
}

} // namespace

/// What a calendar file held stands in while the file cannot be read, also after a new start.
class CalendarMemoryTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_room;
    std::unique_ptr<DebugLogService> m_log;
    std::unique_ptr<EventStore> m_store;
    QByteArray m_zone = "UTC";

    [[nodiscard]] QString path(const QString &name) const { return m_room->filePath(u"calendars/"_s + name); }
    [[nodiscard]] QString memoryFolder() const { return m_room->filePath(u"state/memory"_s); }

    void write(const QString &name, const QByteArray &text) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        QCOMPARE(file.write(text), text.size());
    }

    void start()
    {
        m_store.reset();
        const auto services = std::make_shared<CalendarServices>(*m_log, memoryFolder());
        m_store = std::make_unique<MergedEventStore>(
            std::vector<std::shared_ptr<CalendarSource>>{
                std::make_shared<IcsFolders>(services, QStringList{m_room->filePath(u"calendars"_s)})},
            [this] { return m_zone; });
        QVERIFY(QCoro::waitFor(m_store->requestFullAccessToEvents()).value_or(false));
    }

    [[nodiscard]] QStringList load(int daysLater = 0)
    {
        const auto events = QCoro::waitFor(m_store->events(day(daysLater)));
        if (!events) {
            return {u"failed: "_s + events.error().localizedDescription};
        }
        QStringList titles;
        for (const CalendarEvent &event : *events) {
            titles << event.title.value_or(QString());
        }
        return titles;
    }

    [[nodiscard]] QStringList memoryFiles() const
    {
        return QDir(memoryFolder()).entryList({u"*.memory"_s}, QDir::Files);
    }

    [[nodiscard]] CalendarStatus status() const { return m_store->monitor().calendars().at(0); }

    /// A good answer, remembered on disk.
    void loadAndRemember(const QByteArray &components)
    {
        write(u"a.ics"_s, calendarText(components));
        start();
        QVERIFY(!load().isEmpty());
        QTRY_COMPARE(memoryFiles().size(), 1);
    }

    /// Only half of the file is there.
    void cutOff()
    {
        QFile file(path(u"a.ics"_s));
        QVERIFY(file.resize(file.size() / 2));
    }

private Q_SLOTS:
    void init()
    {
        m_room = std::make_unique<QTemporaryDir>();
        m_log = std::make_unique<DebugLogService>(m_room->filePath(u"log"_s));
        QVERIFY(QDir(m_room->path()).mkpath(u"calendars"_s));
    }

    void cleanup()
    {
        m_store.reset();
        m_log.reset();
        m_room.reset();
        m_zone = "UTC";
    }

    void aFileThatIsCutOffStandsWithWhatItHeld()
    {
        loadAndRemember(lesson("Zoom - Anna"));
        cutOff();
        QCOMPARE(load(), QStringList{u"Zoom - Anna"_s});
        QVERIFY(status().usesLastAnswer);
        QVERIFY(!status().isGap());
        QCOMPARE(m_log->latestLines().filter(u"lastAnswerStands=yes"_s).size(), 1);
    }

    void itStandsAfterANewStart()
    {
        loadAndRemember(lesson("Zoom - Anna"));
        cutOff();
        start();
        QCOMPARE(load(), QStringList{u"Zoom - Anna"_s});
        QVERIFY(status().lastRead.has_value());
    }

    void aFileThatIsNoLongerACalendarStandsToo()
    {
        loadAndRemember(lesson("Zoom - Anna"));
        write(u"a.ics"_s, "garbage");
        start();
        QCOMPARE(load(), QStringList{u"Zoom - Anna"_s});
    }

    void theSevenDaysAfterAreKnown()
    {
        loadAndRemember(lesson("Zoom - Anna", "RRULE:FREQ=DAILY\n") +
                        lesson("Zoom - Ben").replace("20250514", "20250521") +
                        lesson("Zoom - Cleo").replace("20250514", "20250522"));
        cutOff();
        start();
        QCOMPARE(load(1), QStringList{u"Zoom - Anna"_s});
        QCOMPARE(load(7), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s}));
    }

    void outsideOfThemItIsNoMemory()
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

    void floatingTimesMeanTheZoneOfTheDay()
    {
        loadAndRemember(lesson("Zoom - Anna").replace("0000Z", "0000").replace("3000Z", "3000"));
        cutOff();
        m_zone = "Europe/Berlin";
        start();
        const auto events = QCoro::waitFor(m_store->events(day(0)));
        QVERIFY(events && events->size() == 1);
        QCOMPARE(secondsSince1970(events->at(0).startDate), fourteenthOfMay + 10 * 3600);
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
        const auto events = QCoro::waitFor(m_store->events(day(0)));
        QVERIFY(events && events->size() == 1);
        QCOMPARE(secondsSince1970(events->at(0).startDate), fourteenthOfMay + 8 * 3600);
    }

    void aChangeIsRememberedAndNothingElseIsWritten()
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

    void onlyTheUserCanReadIt()
    {
        loadAndRemember(lesson("Zoom - Anna"));
        const auto others = QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther |
                            QFile::ExeGroup | QFile::ExeOther;
        QCOMPARE(QFile::permissions(memoryFolder()) & others, QFile::Permissions());
        QCOMPARE(QFile::permissions(memoryFolder() + u'/' + memoryFiles().at(0)) & others,
                 QFile::Permissions());
    }

    void whatIsNoRegularFileIsLeftAlone_data() { obstacles::addRows(); }

    void whatIsNoRegularFileIsLeftAlone()
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

    void aDamagedMemoryIsNone_data()
    {
        QTest::addColumn<QByteArray>("damage");
        QTest::newRow("cut") << QByteArray();
        QTest::newRow("changed") << QByteArray("Zoom - Eve!");
        QTest::newRow("another version") << QByteArray("9");
    }

    void aDamagedMemoryIsNone()
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

    void withoutAMemoryAGapIsToldAndOtherLessonsAreGiven()
    {
        write(u"a.ics"_s, calendarText(lesson("Zoom - Anna")));
        cutOff();
        write(u"b.ics"_s, calendarText(lesson("Zoom - Ben")));
        start();
        QCOMPARE(load(), QStringList{u"Zoom - Ben"_s});
        QVERIFY(status().isGap());
        QCOMPARE(status().name, u"a.ics"_s);
        QVERIFY(status().failingSince.has_value());
    }

    void aWholeDayAloneDoesNotHideAGap()
    {
        write(u"a.ics"_s, calendarText(lesson("Zoom - Anna")));
        cutOff();
        write(u"b.ics"_s, calendarText("BEGIN:VEVENT\nUID:holiday\nDTSTAMP:20250101T000000Z\n"
                                       "DTSTART;VALUE=DATE:20250514\nSUMMARY:Holiday\nEND:VEVENT\n"));
        start();
        QVERIFY(load().value(0).startsWith(u"failed"_s));
    }

    void aFileThatIsNoCalendarIsNoGap()
    {
        write(u"a.ics"_s, "garbage");
        start();
        for (int round = 0; round < 3; ++round) {
            QCOMPARE(load(), QStringList());
            QCOMPARE(status().condition, CalendarStatus::Condition::leftOut);
        }
        QCOMPARE(m_log->latestLines().filter(u"calendar file left out"_s).size(), 1);
        QCOMPARE(m_log->latestLines().filter(u"did not answer"_s).size(), 0);
    }

    void whatCannotBeWrittenIsWrittenLater()
    {
        write(u"a.ics"_s, calendarText(lesson("Zoom - Anna")));
        QVERIFY(QDir(m_room->path()).mkpath(u"state"_s));
        QFile obstacle(memoryFolder());
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        start();
        QCOMPARE(load(), QStringList{u"Zoom - Anna"_s});
        QTRY_COMPARE(m_log->latestLines().filter(u"calendar not remembered"_s).size(), 1);
        QVERIFY(obstacle.remove());
        QTRY_COMPARE((static_cast<void>(load()), memoryFiles().size()), 1);
        QCOMPARE(m_log->latestLines().filter(u"calendar not remembered"_s).size(), 1);
    }

    void anExpiredMemoryGoesAtTheStart()
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

    void whatLiesInAFolderThatCannotBeReadIsUnknown()
    {
        FolderListing listing;
        listing.errors.emplace("/calendars/school", u"denied"_s);
        QVERIFY(listing.isUnknown("/calendars/school/a.ics"));
        QVERIFY(listing.isUnknown("/calendars/school"));
        QVERIFY(!listing.isUnknown("/calendars/schools/a.ics"));
        QVERIFY(!listing.isUnknown("/calendars/b.ics"));
    }

    void whatIsTooLargeIsNotRemembered()
    {
        QByteArray components;
        for (int number = 0; number < 100; ++number) {
            components += lesson("Zoom - " + QByteArray::number(number),
                                 "DESCRIPTION:" + QByteArray(60'000, 'a') + "\n");
        }
        write(u"a.ics"_s, calendarText(components));
        start();
        QCOMPARE(load().size(), 100);
        QTRY_COMPARE(m_log->latestLines().filter(u"calendar not remembered"_s).size(), 1);
        QCOMPARE(memoryFiles().size(), 0);
    }
};

QUILLET_TEST(CalendarMemoryTest, runTest<CalendarMemoryTest>);
#include "CalendarMemoryTest.moc"
