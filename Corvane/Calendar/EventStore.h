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

/// What the user allows the program to do with the calendars of the machine.
enum class CalendarAuthorization { notDetermined, restricted, denied, writeOnly, fullAccess };

/// Why online calendars are asked for news: because it is time, or because someone waits or something
/// changed.
enum class CalendarRefresh { regular, wished };

/// The platform's calendars, read only. Called by EventKitLessonScheduleStore, once a minute.
///
/// Main thread only, and no call blocks it. Answers arrive in the order of the calls; a call for an interval
/// that is already being queried waits for that query instead of starting another.
class EventStore {
public:
    virtual ~EventStore() = default;

    /// What is known of the permission without asking. `notDetermined` until the first request of the
    /// process; a denial is not remembered, since a calendar service may be installed while the program runs.
    [[nodiscard]] virtual CalendarAuthorization authorizationStatus() const = 0;

    /// Asks for full access to events and answers whether it was granted. Fails where the asking itself
    /// failed (a calendar service that does not answer); within 5 seconds in any case.
    virtual QCoro::Task<std::expected<bool, Failure>> requestFullAccessToEvents() = 0;

    /// Every event of every calendar that overlaps `interval`, occurrences of recurring events one by one,
    /// cancelled ones left out, tentative and declined ones kept, all-day ones marked.
    ///
    /// Ends within 5 seconds. Where a calendar does not answer, that is logged, and its last good answer for
    /// the same interval stands in; where there is none, monitor().gap() says so when the call ends. The call
    /// fails only when no calendar answers.
    virtual QCoro::Task<std::expected<std::vector<CalendarEvent>, Failure>> events(DateInterval interval) = 0;

    /// Asks online calendars to look for news on their servers, and returns at once. A server is not asked
    /// again while an earlier request runs; a regular request is left out where earlier ones failed not long
    /// ago. monitor() tells when news arrived.
    virtual void refresh(CalendarRefresh kind) = 0;

    /// How the calendars fare. Lives as long as the store.
    [[nodiscard]] virtual CalendarMonitor &monitor() = 0;
};

} // namespace corvane
