// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/EventKitLessonScheduleStore.h"

#include "Corvane/Utilities/DateText.h"
#include "Corvane/Utilities/PlainText.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

EventKitLessonScheduleStore::EventKitLessonScheduleStore(EventStore &eventStore,
                                                         const DateProviding &dateProvider,
                                                         CalendarLessonParser parser, DayCalendar calendar,
                                                         DebugLogService &logger)
    : m_eventStore(eventStore)
    , m_dateProvider(dateProvider)
    , m_parser(std::move(parser))
    , m_calendar(std::move(calendar))
    , m_logger(logger)
{
}

QCoro::Task<LessonScheduleResult> EventKitLessonScheduleStore::lessonsForToday()
{
    const auto access = co_await requestCalendarAccessIfNeeded();
    if (!access) {
        co_return std::unexpected(access.error());
    }
    const DateInterval today = todayInterval(currentDate());
    const auto found = co_await m_eventStore.events(today);
    if (!found) {
        co_return std::unexpected(LessonScheduleError(found.error()));
    }
    std::vector<CalendarLessonEvent> timed;
    for (const CalendarEvent &event : *found) {
        if (auto lessonEvent = CalendarLessonEvent::fromTimedEvent(event)) {
            timed.push_back(*std::move(lessonEvent));
        }
    }
    std::vector<Lesson> lessons = m_parser.lessons(timed);
    // The lessons may be in a calendar that does not answer; an empty result would remove those already
    // shown.
    if (const QString gap = m_eventStore.monitor().gap(); lessons.empty() && !gap.isEmpty()) {
        co_return std::unexpected(LessonScheduleError(Failure{gap}));
    }
    logLoad(timed.size(), lessons, today);
    co_return lessons;
}

DateInterval EventKitLessonScheduleStore::todayInterval(Date date) const
{
    return m_calendar.dayInterval(date);
}

QCoro::Task<std::expected<void, LessonScheduleError>>
EventKitLessonScheduleStore::requestCalendarAccessIfNeeded()
{
    switch (m_eventStore.authorizationStatus()) {
    case CalendarAuthorization::notDetermined: {
        const auto granted = co_await requestAccess();
        if (!granted) {
            co_return std::unexpected(LessonScheduleError(granted.error()));
        }
        if (!*granted) {
            co_return std::unexpected(LessonScheduleError(CalendarAccessError::denied));
        }
        co_return {};
    }
    case CalendarAuthorization::fullAccess:
        co_return {};
    case CalendarAuthorization::restricted:
    case CalendarAuthorization::denied:
    case CalendarAuthorization::writeOnly:
        co_return std::unexpected(LessonScheduleError(CalendarAccessError::denied));
    }
    Q_UNREACHABLE();
}

QCoro::Task<std::expected<bool, Failure>> EventKitLessonScheduleStore::requestAccess()
{
    return m_eventStore.requestFullAccessToEvents();
}

void EventKitLessonScheduleStore::logLoad(std::size_t rawEvents, const std::vector<Lesson> &lessons,
                                          DateInterval window)
{
    m_logger.log(
        u"calendar events loaded rawEvents=%1 parsedLessons=%2 windowStart=%3 windowEnd=%4 timezone=%5"_s.arg(
            QString::number(rawEvents), QString::number(lessons.size()), descriptionText(window.start),
            descriptionText(window.end), m_calendar.timeZoneIdentifier()));
    for (const Lesson &lesson : lessons) {
        // Joined, not inserted with arg(): the name itself may contain "%1".
        m_logger.log(u"calendar lesson student=\""_s + plainText(lesson.studentName) + u"\" platform=\""_s +
                     rawValue(lesson.platform) + u"\" start="_s + descriptionText(lesson.startTime) +
                     u" end="_s + descriptionText(lesson.endTime()) + u" duration="_s +
                     QString::number(static_cast<qint64>(lesson.duration.count())));
    }
}

} // namespace corvane
