// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/CalendarSource.h"

#include <expected>
#include <memory>

namespace corvane {

struct CalendarServices;

/// The enabled calendars of the desktop's calendar service, those of contacts and of the weather excepted.
///
/// New calendars are taken up, removed ones are dropped and forgotten. Where the list of calendars cannot be
/// had from the beginning, those that are remembered stand in.
class EvolutionCalendars final : public CalendarSource {
public:
    explicit EvolutionCalendars(std::shared_ptr<CalendarServices> services);
    ~EvolutionCalendars() override;
    EvolutionCalendars(const EvolutionCalendars &) = delete;
    EvolutionCalendars &operator=(const EvolutionCalendars &) = delete;

    QCoro::Task<std::expected<bool, Failure>> checkAvailability(QDeadlineTimer deadline) override;
    QCoro::Task<CalendarAnswers> query(CalendarQuestion question, QDeadlineTimer deadline) override;
    void refresh(CalendarRefresh kind) override;
    void close() override;

private:
    class Impl;
    std::shared_ptr<Impl> m_impl;
};

} // namespace corvane
