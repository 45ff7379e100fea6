// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/CalendarExpander.h"

#include "Corvane/Utilities/Spawn.h"

#include <QDeadlineTimer>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace corvane {

namespace {

/// Less than a query's time limit, so that an expansion that was cut short still answers it.
constexpr auto expansionTime = 2500ms;
/// How long an expansion may take to stop after it was cancelled; most stop at once.
constexpr auto stoppingTime = 300ms;
/// At most this many overdue expansions of one calendar keep running.
constexpr int maximumStrays = 2;

} // namespace

CalendarExpander::CalendarExpander(std::shared_ptr<CalendarServices> services)
    : m_services(std::move(services))
{
}

QCoro::Task<std::expected<CalendarExpander::Outcome, CalendarError>>
CalendarExpander::expand(std::shared_ptr<CalendarExpander> self, CalendarQuestion question, Work work)
{
    const CalendarError tooSlow{CalendarStatus::Condition::silent, u"expansion"_s, u"it took too long"_s};
    if (self->m_strays >= maximumStrays) {
        co_return std::unexpected(tooSlow);
    }
    if (self->m_question != question) {
        self->m_question = question;
        self->m_knownSeries.clear();
    }
    const auto control = std::make_shared<ExpansionControl>();
    ExpansionRequest request{question.interval, question.timeZoneId, self->m_knownSeries, self->m_suspects};
    self->m_controls.insert(control);
    const auto expanding = startOnPool(
        self->m_services->workers.threads(),
        [work = std::move(work), request = std::move(request), control] { return work(request, *control); });
    if (!co_await expanding.until(QDeadlineTimer(expansionTime, Qt::PreciseTimer))) {
        const std::size_t suspect = control->busyWith;
        control->cancel();
        if (suspect != 0 && !control->isOptional) {
            self->m_suspects.insert(suspect);
        }
        if (!co_await expanding.until(QDeadlineTimer(stoppingTime, Qt::PreciseTimer))) {
            ++self->m_strays;
            self->m_services->workers.addThread();
            spawn(awaitStray(self, control, expanding));
            co_return std::unexpected(tooSlow);
        }
    }
    self->m_controls.erase(control);
    Outcome outcome = std::move(*expanding.value());
    if (!outcome.expansion.series.empty()) {
        self->m_knownSeries = outcome.expansion.series;
    }
    co_return outcome;
}

template <typename Done>
QCoro::Task<void> CalendarExpander::awaitStray(std::shared_ptr<CalendarExpander> self,
                                               std::shared_ptr<ExpansionControl> control, Done done)
{
    co_await done.untilResolved();
    self->m_controls.erase(control);
    self->m_services->workers.removeThread();
    --self->m_strays;
}

void CalendarExpander::cancel()
{
    for (const auto &control : m_controls) {
        control->cancel();
    }
}

} // namespace corvane
