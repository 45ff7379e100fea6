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

/// Today's lessons from the machine's calendars, read only.
///
/// Main thread only. Requests permission while it is undecided. It keeps no cache and does not watch for
/// changes: the next reload fetches new events. The borrowed services and the store itself outlive every
/// load.
class EventKitLessonScheduleStore final : public LessonScheduleProviding {
public:
    /// `calendar` defines the bounds of today and the time zone.
    EventKitLessonScheduleStore(EventStore &eventStore, const DateProviding &dateProvider,
                                CalendarLessonParser parser, DayCalendar calendar, DebugLogService &logger);

    /// Today's lessons in the parser's order. Fails with CalendarAccessError::denied, with the event store's
    /// error, or with the monitor's gap if there are no lessons while a calendar's events are missing.
    QCoro::Task<LessonScheduleResult> lessonsForToday() override;

    /// The day of `date` in the store's calendar.
    [[nodiscard]] DateInterval todayInterval(Date date) const;

    [[nodiscard]] const CalendarLessonParser &parser() const { return m_parser; }

private:
    QCoro::Task<std::expected<void, LessonScheduleError>> requestCalendarAccessIfNeeded();
    QCoro::Task<std::expected<bool, Failure>> requestAccess();
    void logLoad(std::size_t rawEvents, const std::vector<Lesson> &lessons, DateInterval window);

    EventStore &m_eventStore;
    /// Unused: every service gets the shared clock, but the system clock decides which day is today.
    [[maybe_unused]] const DateProviding &m_dateProvider;
    CalendarLessonParser m_parser;
    DayCalendar m_calendar;
    DebugLogService &m_logger;
};

} // namespace corvane
