// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/EventStore.h"
#include "Corvane/Platform/Linux/EvolutionData/CalendarQuestion.h"
#include "Corvane/Platform/Linux/EvolutionData/CalendarSource.h"

#include <expected>
#include <memory>
#include <vector>

namespace corvane {

/// The calendars of several sources as one store; events are sorted by start.
///
/// Queries run one after another; a call for the interval of the last query in the queue shares its answer. A
/// request and the query that follows it share one time limit, so that a whole load of lessons ends within
/// five seconds. events() fails only if no source is there, or if no calendar has answered, now or earlier.
///
/// If the store is destroyed during calls, it cancels what they wait for; they end on later turns of the
/// event loop, never inside the destructor.
class MergedEventStore final : public EventStore {
public:
    /// `sources` are asked in this order; the first one that is there grants access.
    MergedEventStore(std::vector<std::shared_ptr<CalendarSource>> sources, TimeZoneId timeZoneId);
    ~MergedEventStore() override;
    MergedEventStore(const MergedEventStore &) = delete;
    MergedEventStore &operator=(const MergedEventStore &) = delete;

    [[nodiscard]] CalendarAuthorization authorizationStatus() const override;
    QCoro::Task<std::expected<bool, Failure>> requestFullAccessToEvents() override;
    QCoro::Task<std::expected<std::vector<CalendarEvent>, Failure>> events(DateInterval interval) override;
    void refresh(CalendarRefresh kind) override;
    [[nodiscard]] CalendarMonitor &monitor() override { return m_monitor; }

private:
    class Impl;
    CalendarMonitor m_monitor;
    std::shared_ptr<Impl> m_impl;
};

} // namespace corvane
