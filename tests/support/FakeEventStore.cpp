// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/FakeEventStore.h"

#include <algorithm>
#include <iterator>

namespace corvane {

CalendarAuthorization FakeEventStore::authorizationStatus() const
{
    return m_isGranted ? CalendarAuthorization::fullAccess : CalendarAuthorization::notDetermined;
}

QCoro::Task<std::expected<bool, Failure>> FakeEventStore::requestFullAccessToEvents()
{
    ++requests;
    m_isGranted = grant.value_or(false);
    auto given = grant; // a copy: co_return would move from the member
    co_return given;
}

QCoro::Task<std::expected<std::vector<CalendarEvent>, Failure>> FakeEventStore::events(DateInterval interval)
{
    intervals.push_back(interval);
    if (failure) {
        co_return std::unexpected(*failure);
    }
    std::vector<CalendarEvent> found;
    std::ranges::copy_if(calendar, std::back_inserter(found), [&interval](const CalendarEvent &event) {
        const bool isMoment = event.startDate == event.endDate;
        return event.startDate < interval.end &&
               (event.endDate > interval.start || (isMoment && event.startDate >= interval.start));
    });
    std::ranges::stable_sort(found, {}, &CalendarEvent::startDate);
    m_monitor.setEvents(found);
    co_return found;
}

} // namespace corvane
