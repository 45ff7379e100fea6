// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/CalendarSource.h"

#include <expected>
#include <memory>

namespace corvane {

struct CalendarServices;

/// The enabled calendars of the desktop's calendar service, except those of contacts and weather.
///
/// New calendars are added; removed ones are dropped, and forgotten after a minute. If the list of calendars
/// is unavailable from the start, the remembered calendars are used.
class EvolutionCalendars final : public CalendarSource {
public:
    explicit EvolutionCalendars(std::shared_ptr<CalendarServices> services);
    ~EvolutionCalendars() override;
    EvolutionCalendars(const EvolutionCalendars &) = delete;
    EvolutionCalendars &operator=(const EvolutionCalendars &) = delete;

    QCoro::Task<std::expected<bool, Failure>> checkAvailability(QDeadlineTimer deadline) override;
    QCoro::Task<CalendarAnswers> query(CalendarQuestion question, QDeadlineTimer deadline) override;
    void askAnew() override;
    void refresh(CalendarRefresh kind) override;
    void close() override;

private:
    class Impl;
    std::shared_ptr<Impl> m_impl;
};

} // namespace corvane
