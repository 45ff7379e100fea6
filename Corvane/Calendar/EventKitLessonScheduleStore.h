// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/CalendarLessonParser.h"
#include "Corvane/Calendar/EventStore.h"
#include "Corvane/Services/LessonScheduleProviding.h"
#include "Corvane/Utilities/DateProviding.h"
#include "Corvane/Utilities/DayCalendar.h"
#include "Corvane/Utilities/DebugLogService.h"

#include <expected>
#include <vector>

namespace corvane {

/// Today's lessons from the calendars of the machine, read only.
///
/// Main thread only. It asks for the permission while none is decided, keeps no cache and does not watch for
/// changes: fresh events come with the next reload. The store and the services
/// handed in, which are borrowed, outlive every load.
class EventKitLessonScheduleStore final : public LessonScheduleProviding {
public:
    /// `calendar` gives the bounds of today and the time zone.
    EventKitLessonScheduleStore(EventStore &eventStore, const DateProviding &dateProvider,
                                CalendarLessonParser parser, DayCalendar calendar, DebugLogService &logger);

    /// The lessons of today in the parser's order. Fails with CalendarAccessError::denied, with what the
    /// event store reports, or where there is no lesson while a calendar's events are missing.
    QCoro::Task<LessonScheduleResult> lessonsForToday() override;

    /// The day of `date` in the store's calendar.
    [[nodiscard]] DateInterval todayInterval(Date date) const;

    /// What decides which events are lessons.
    [[nodiscard]] const CalendarLessonParser &parser() const { return m_parser; }

private:
    QCoro::Task<std::expected<void, LessonScheduleError>> requestCalendarAccessIfNeeded();
    QCoro::Task<std::expected<bool, Failure>> requestAccess();
    void logLoad(std::size_t rawEvents, const std::vector<Lesson> &lessons, DateInterval window);

    EventStore &m_eventStore;
    /// Not read: each service is built with the shared clock, but which day is today is the system's to say.
    [[maybe_unused]] const DateProviding &m_dateProvider;
    CalendarLessonParser m_parser;
    DayCalendar m_calendar;
    DebugLogService &m_logger;
};

} // namespace corvane
