// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/EventExpansion.h"

#include "Corvane/Platform/Linux/EvolutionData/SourceCalendar.h"

#include <qcoro/qcorotask.h>

#include <expected>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>

namespace corvane {

/// Expands the components of one calendar on worker threads, each time within a time limit.
///
/// Keeps the outcomes of the series for the next expansion of the same question, and leaves out the series
/// that kept an earlier expansion from finishing. A thread that does not return costs only this calendar: the
/// others get an additional one. Main thread only; shared by the coroutines.
class CalendarExpander {
public:
    struct Outcome {
        /// Incomplete if it was cut short.
        Expansion expansion;
        /// Calendar text of what matters in the remembered span, if it was asked for and is available.
        std::optional<QByteArray> text;
    };
    /// Runs on a worker thread. Values in, values out.
    using Work = std::function<Outcome(const ExpansionRequest &request, ExpansionControl &control)>;

    explicit CalendarExpander(std::shared_ptr<CalendarServices> services);

    /// Fails if the expansion cannot be stopped, or if too many earlier ones are still running.
    static QCoro::Task<std::expected<Outcome, CalendarError>> expand(std::shared_ptr<CalendarExpander> self,
                                                                     CalendarQuestion question, Work work);

    /// Called when the calendar has changed: the slow series may be gone.
    void forgetSuspects() { m_suspects.clear(); }

    /// Makes running expansions end at the next opportunity.
    void cancel();

private:
    template <typename Done>
    static QCoro::Task<void> awaitStray(std::shared_ptr<CalendarExpander> self,
                                        std::shared_ptr<ExpansionControl> control, Done done);

    std::shared_ptr<CalendarServices> m_services;
    CalendarQuestion m_question;
    std::map<QByteArray, std::shared_ptr<const GroupOutcome>> m_knownSeries;
    std::set<std::size_t> m_suspects;
    std::set<std::shared_ptr<ExpansionControl>> m_controls;
    int m_strays = 0;
};

} // namespace corvane
