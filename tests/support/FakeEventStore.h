// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/EventStore.h"

#include <expected>
#include <optional>
#include <vector>

namespace corvane {

/// An event store over a list of events. It fulfils the port's contract and records the requests.
class FakeEventStore final : public EventStore {
public:
    /// The events of all calendars: single ones, in any order.
    std::vector<CalendarEvent> calendar;
    /// The answer to the next requests for access.
    std::expected<bool, Failure> grant = true;
    /// When set, queries fail with this.
    std::optional<Failure> failure;

    int requests = 0;
    int refreshes = 0;
    std::optional<CalendarRefresh> lastRefresh;
    std::vector<DateInterval> intervals;

    [[nodiscard]] CalendarAuthorization authorizationStatus() const override;
    QCoro::Task<std::expected<bool, Failure>> requestFullAccessToEvents() override;
    QCoro::Task<std::expected<std::vector<CalendarEvent>, Failure>> events(DateInterval interval) override;
    void refresh(CalendarRefresh kind) override
    {
        ++refreshes;
        lastRefresh = kind;
    }
    [[nodiscard]] CalendarMonitor &monitor() override { return m_monitor; }

private:
    bool m_isGranted = false;
    CalendarMonitor m_monitor;
};

} // namespace corvane
