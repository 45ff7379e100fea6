// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/CalendarSource.h"

#include <expected>
#include <memory>

namespace corvane {

/// The enabled calendars of the desktop's calendar service, those of contacts and of the weather excepted.
///
/// Calendars stay open between queries; one that fails or does not answer is opened again at the next. New
/// ones are taken up, removed ones dropped. Series are fetched and expanded only when one of them changed.
class EvolutionCalendars final : public CalendarSource {
public:
    EvolutionCalendars(DebugLogService &log, TimeZoneId timeZoneId);
    ~EvolutionCalendars() override;
    EvolutionCalendars(const EvolutionCalendars &) = delete;
    EvolutionCalendars &operator=(const EvolutionCalendars &) = delete;

    QCoro::Task<std::expected<bool, Failure>> checkAvailability(QDeadlineTimer deadline) override;
    QCoro::Task<CalendarAnswers> query(DateInterval interval, QDeadlineTimer deadline) override;
    void close() override;

private:
    class Impl;
    std::shared_ptr<Impl> m_impl;
};

} // namespace corvane
