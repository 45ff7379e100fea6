// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/RememberedCalendars.h"

#include "Corvane/Platform/Linux/EvolutionData/SourceCalendar.h"

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

RememberedCalendars::RememberedCalendars(std::shared_ptr<CalendarServices> services, QString prefix)
    : m_services(std::move(services))
    , m_prefix(std::move(prefix))
{
}

QCoro::Task<bool> RememberedCalendars::areThere(QDeadlineTimer deadline)
{
    if (!m_reading) {
        m_reading =
            startOnPool(m_services->memories.threads(),
                        [memory = m_services->memory, prefix = m_prefix] { return memory.readAll(prefix); });
    }
    const auto reading = *m_reading;
    const bool isRead = co_await reading.until(deadline);
    co_return isRead && !reading.value()->empty();
}

QCoro::Task<QStringList> RememberedCalendars::identifiers(QDeadlineTimer deadline)
{
    QStringList identifiers;
    if (co_await areThere(deadline)) {
        for (const RememberedCalendar &calendar : *m_reading->value()) {
            identifiers << calendar.identifier;
        }
    }
    co_return identifiers;
}

QCoro::Task<void> RememberedCalendars::answer(CalendarQuestion question, QDeadlineTimer deadline,
                                              QString reason, CalendarAnswers &answers)
{
    if (!m_silentSince) {
        m_silentSince = currentDate();
    }
    if (!co_await areThere(deadline)) {
        co_return;
    }
    const std::shared_ptr<Calendars> calendars = m_reading->value();
    using Found = std::vector<std::optional<CalendarReading>>;
    const auto expanding = startOnPool(m_services->workers.threads(), [calendars, question] {
        Found found;
        for (const RememberedCalendar &calendar : *calendars) {
            found.push_back(rememberedReading(calendar, question));
        }
        return found;
    });
    if (!co_await expanding.until(deadline)) {
        co_return;
    }
    for (std::size_t index = 0; index < calendars->size(); ++index) {
        const RememberedCalendar &calendar = (*calendars)[index];
        const auto &reading = (*expanding.value())[index];
        answers.calendars.push_back({.identifier = calendar.identifier,
                                     .name = calendar.name,
                                     .account = calendar.account,
                                     .condition = CalendarStatus::Condition::silent,
                                     .reason = reason,
                                     .lastRead = calendar.readAt,
                                     .failingSince = m_silentSince,
                                     .usesLastAnswer = reading.has_value(),
                                     .eventCount = reading ? static_cast<int>(reading->events.size()) : 0});
        if (reading) {
            ++answers.answered;
            std::ranges::copy(reading->events, std::back_inserter(answers.events));
        } else {
            ++answers.silent;
            answers.error = reason;
        }
    }
}

} // namespace corvane
