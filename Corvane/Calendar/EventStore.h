// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/CalendarEvent.h"
#include "Corvane/Calendar/CalendarMonitor.h"
#include "Corvane/Utilities/DayCalendar.h"
#include "Corvane/Utilities/Failure.h"

#include <qcoro/qcorotask.h>

#include <expected>
#include <vector>

namespace corvane {

/// What the user allows the program to do with the machine's calendars. No adapter here reports `restricted`,
/// `denied` or `writeOnly`, which are for a platform that asks the user.
enum class CalendarAuthorization { notDetermined, restricted, denied, writeOnly, fullAccess };

/// Why online calendars are refreshed: on schedule, or because someone is waiting or something changed.
enum class CalendarRefresh { regular, wished };

/// The platform's calendars, read only. EventKitLessonScheduleStore calls it once a minute.
///
/// Main thread only; no call blocks. Answers arrive in the order of the calls. A call for an interval that is
/// already being queried waits for that query instead of starting another.
class EventStore {
public:
    virtual ~EventStore() = default;

    /// The known permission; does not ask for it. `notDetermined` until the process first requests it. A
    /// denial is not remembered, because a calendar service may be installed while the program runs.
    [[nodiscard]] virtual CalendarAuthorization authorizationStatus() const = 0;

    /// Requests full access to events and returns whether it was granted. Fails if the request itself failed
    /// (the calendar service does not answer). Ends within 5 seconds.
    virtual QCoro::Task<std::expected<bool, Failure>> requestFullAccessToEvents() = 0;

    /// Every event of every calendar that overlaps `interval`: recurring events as single occurrences,
    /// cancelled events left out, tentative and declined ones included, all-day ones marked.
    ///
    /// Ends within 5 seconds, and 0.2 s later for each query of another interval that still waits. If a
    /// calendar does not answer, that is logged and its last good answer for the same interval is used;
    /// without one, monitor().gap() says so when the call ends. The call fails only if no calendar answers.
    /// A calendar that reports its changes, and has reported none, may be asked only every five minutes,
    /// unless monitor().isViewed().
    virtual QCoro::Task<std::expected<std::vector<CalendarEvent>, Failure>> events(DateInterval interval) = 0;

    /// Asks online calendars to fetch news from their servers; returns at once. A server is not asked again
    /// while an earlier request is running, and a regular request is skipped if earlier ones failed recently.
    /// monitor() reports when news has arrived. If news is wished, the next query that begins asks every
    /// calendar.
    virtual void refresh(CalendarRefresh kind) = 0;

    /// The state of the calendars. Lives as long as the store.
    [[nodiscard]] virtual CalendarMonitor &monitor() = 0;
};

} // namespace corvane
