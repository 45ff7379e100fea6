// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/EventKitLessonScheduleStore.h"

#include "Corvane/Utilities/DateProviding.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QTemporaryDir>
#include <QTest>

#include <utility>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

/// Answers as the test sets it, and records what it was asked.
class ScriptedEventStore final : public EventStore {
public:
    CalendarAuthorization authorization = CalendarAuthorization::fullAccess;
    std::expected<bool, Failure> grant = true;
    std::expected<std::vector<CalendarEvent>, Failure> answer;
    int requests = 0;
    std::vector<DateInterval> intervals;

    [[nodiscard]] CalendarAuthorization authorizationStatus() const override { return authorization; }
    QCoro::Task<std::expected<bool, Failure>> requestFullAccessToEvents() override
    {
        ++requests;
        auto given = grant; // co_return would move the member away
        co_return given;
    }
    QCoro::Task<std::expected<std::vector<CalendarEvent>, Failure>> events(DateInterval interval) override
    {
        intervals.push_back(interval);
        auto given = answer;
        co_return given;
    }
    void refresh(CalendarRefresh) override {}
    [[nodiscard]] CalendarMonitor &monitor() override { return m_monitor; }

private:
    CalendarMonitor m_monitor;
};

CalendarEvent timed(const QString &title, Date start, Seconds length = minutes(30))
{
    CalendarEvent event;
    event.title = title;
    event.startDate = start;
    event.endDate = start + length;
    return event;
}

} // namespace

class EventKitLessonScheduleStoreTest : public QObject {
    Q_OBJECT

    ManualClock m_clock{at("08:00:00")};
    QTemporaryDir m_library;
    std::unique_ptr<DebugLogService> m_logger;
    std::unique_ptr<ScriptedEventStore> m_events;
    std::unique_ptr<EventKitLessonScheduleStore> m_store;
    SystemDateProvider m_dateProvider;

    void make(const char *zone)
    {
        m_store = std::make_unique<EventKitLessonScheduleStore>(
            *m_events, m_dateProvider, CalendarLessonParser(PlatformProfile::defaults()),
            DayCalendar(QTimeZone(zone)), *m_logger);
    }

    [[nodiscard]] LessonScheduleResult load() { return QCoro::waitFor(m_store->lessonsForToday()); }

private Q_SLOTS:
    void init()
    {
        m_logger = std::make_unique<DebugLogService>(m_library.path());
        m_events = std::make_unique<ScriptedEventStore>();
        m_clock.setWallClock(at("08:00:00"));
        make("UTC");
    }

    void noEventsTodayIsAnEmptyListAndASummary()
    {
        QVERIFY(load().value().empty());
        QCOMPARE(
            m_logger->latestLines(),
            QStringList{
                u"2026-11-16T08:00:00.000Z calendar events loaded rawEvents=0 parsedLessons=0 "
                "windowStart=2026-11-16 00:00:00 +0000 windowEnd=2026-11-17 00:00:00 +0000 timezone=UTC"_s});
    }

    void withoutAnyLessonAGapFailsTheLoad()
    {
        m_events->monitor().setCalendars({}, u"The calendar \"School\" did not answer."_s);
        CalendarEvent holiday = timed(u"Holiday"_s, at("00:00:00"), minutes(1440));
        holiday.isAllDay = true;
        m_events->answer = std::vector{holiday, timed(u"Dentist"_s, at("12:00:00"))};
        const auto failed = load();
        QVERIFY(!failed.has_value());
        QCOMPARE(failed.error(), LessonScheduleError(Failure{u"The calendar \"School\" did not answer."_s}));
        QCOMPARE(m_logger->latestLines(), QStringList());
        m_events->monitor().setCalendars({});
        QVERIFY(load().value().empty());
    }

    void aLessonBesideAGapIsReturned()
    {
        m_events->monitor().setCalendars({}, u"The calendar \"School\" did not answer."_s);
        m_events->answer = std::vector{timed(u"Zoom - Anna"_s, at("09:00:00"))};
        QCOMPARE(load().value().size(), std::size_t{1});
    }

    void lessonsAreLoggedOneByOne()
    {
        m_events->answer =
            std::vector{timed(u"Zoom - Ben %1"_s, at("11:00:00"), minutes(45)),
                        timed(u"Dentist"_s, at("12:00:00")), timed(u"Zoom - Anna"_s, at("09:00:00"))};
        const auto lessons = load().value();
        QCOMPARE(lessons.size(), std::size_t{2});
        QCOMPARE(lessons.front().studentName, u"Anna"_s);
        const QStringList lines = m_logger->latestLines();
        QCOMPARE(lines.size(), 3);
        QVERIFY(lines.at(0).contains(u"rawEvents=3 parsedLessons=2 "_s));
        QCOMPARE(lines.at(1).sliced(25),
                 u"calendar lesson student=\"Anna\" platform=\"Zoom\" start=2026-11-16 09:00:00 +0000 "
                 "end=2026-11-16 09:25:00 +0000 duration=1500"_s);
        QCOMPARE(lines.at(2).sliced(25),
                 u"calendar lesson student=\"Ben %1\" platform=\"Zoom\" start=2026-11-16 11:00:00 +0000 "
                 "end=2026-11-16 11:45:00 +0000 duration=2700"_s);
    }

    void aNameCannotForgeALogLine()
    {
        const QString name = u"Ben\x1b]0;forged\x07\u202E"_s;
        m_events->answer = std::vector{timed(u"Zoom - "_s + name, at("11:00:00"), minutes(45))};
        const auto lessons = load().value();
        QVERIFY(lessons.front().studentName.contains(u'\x1b'));
        QVERIFY(lessons.front().studentName.contains(u'\u202E'));
        const QString line = m_logger->latestLines().last();
        QVERIFY2(line.contains(u"student=\"Ben  0;forged \" "_s), qPrintable(line));
    }

    void anAllDayEventIsNeitherALessonNorCounted()
    {
        CalendarEvent allDay = timed(u"Zoom - Anna"_s, at("00:00:00"), minutes(1440));
        allDay.isAllDay = true;
        m_events->answer = std::vector{allDay};
        QVERIFY(load().value().empty());
        QVERIFY(m_logger->latestLines().first().contains(u"rawEvents=0 parsedLessons=0"_s));
    }

    void anEventThatRunsPastMidnightIsPassedToTheParser()
    {
        m_events->answer = std::vector{timed(u"Zoom - Anna"_s, at("00:00:00") - minutes(20), minutes(45))};
        const auto lessons = load().value();
        QCOMPARE(lessons.size(), std::size_t{1});
        QCOMPARE(lessons.front().startTime, at("00:00:00") - minutes(20));
    }

    void daylightSavingDaysAreQueriedFromMidnightToMidnight()
    {
        make("Europe/Berlin");
        const auto day = [this](const char *moment) {
            const Date noon = fromDateTime(QDateTime::fromString(QString::fromLatin1(moment), Qt::ISODate));
            const DateInterval interval = m_store->todayInterval(noon);
            return (interval.end - interval.start).count() / 3600;
        };
        QCOMPARE(day("2026-03-29T10:00:00Z"), 23.0);
        QCOMPARE(day("2026-10-25T10:00:00Z"), 25.0);
        m_clock.setWallClock(fromDateTime(QDateTime::fromString(u"2026-10-25T10:00:00Z"_s, Qt::ISODate)));
        QVERIFY(load().has_value());
        QCOMPARE(descriptionText(m_events->intervals.back().start), u"2026-10-24 22:00:00 +0000"_s);
        QCOMPARE(descriptionText(m_events->intervals.back().end), u"2026-10-25 23:00:00 +0000"_s);
        QVERIFY(m_logger->latestLines().last().endsWith(u"timezone=Europe/Berlin"_s));
    }

    void writeOnlyPermissionIsDeniedNotEmpty()
    {
        for (const auto status : {CalendarAuthorization::writeOnly, CalendarAuthorization::denied,
                                  CalendarAuthorization::restricted}) {
            m_events->authorization = status;
            const LessonScheduleResult result = load();
            QVERIFY(!result);
            QVERIFY(result.error() == LessonScheduleError(CalendarAccessError::denied));
        }
        QCOMPARE(m_events->requests, 0);
        QVERIFY(m_events->intervals.empty());
        QCOMPARE(localizedDescription(CalendarAccessError::denied),
                 u"Calendar access is required to read today's lessons."_s);
    }

    void anUndecidedPermissionIsRequested()
    {
        m_events->authorization = CalendarAuthorization::notDetermined;
        QVERIFY(load().has_value());
        QCOMPARE(m_events->requests, 1);
        QCOMPARE(m_events->intervals.size(), std::size_t{1});
    }

    void aRefusalIsDenied()
    {
        m_events->authorization = CalendarAuthorization::notDetermined;
        m_events->grant = false;
        QVERIFY(load().error() == LessonScheduleError(CalendarAccessError::denied));
        QVERIFY(m_events->intervals.empty());
    }

    void aRequestErrorIsPassedOn()
    {
        m_events->authorization = CalendarAuthorization::notDetermined;
        m_events->grant = std::unexpected(Failure{u"the calendar service does not answer"_s});
        QVERIFY(load().error() == LessonScheduleError(Failure{u"the calendar service does not answer"_s}));
    }

    void aQueryErrorIsPassedOn()
    {
        m_events->answer = std::unexpected(Failure{u"no calendar answers"_s});
        QVERIFY(load().error() == LessonScheduleError(Failure{u"no calendar answers"_s}));
        QVERIFY(m_logger->latestLines().isEmpty());
    }

    void eachLoadQueriesAgain()
    {
        QVERIFY(load().value().empty());
        m_events->answer = std::vector{timed(u"Zoom - Anna"_s, at("09:00:00"))};
        QCOMPARE(load().value().size(), std::size_t{1});
        m_clock.setWallClock(at("08:00:00") + minutes(1440));
        QVERIFY(load().has_value());
        QCOMPARE(m_events->intervals.size(), std::size_t{3});
        QCOMPARE(m_events->intervals.back().start, at("00:00:00") + minutes(1440));
    }
};

QUILLET_TEST(EventKitLessonScheduleStoreTest, runTest<EventKitLessonScheduleStoreTest>);
#include "EventKitLessonScheduleStoreTest.moc"
