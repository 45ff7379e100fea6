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

/// Expands the components of one calendar on worker threads, each time within a limit.
///
/// It keeps the outcomes of the series for the next expansion of the same question, and leaves out what an
/// earlier expansion did not get past. A thread that does not come back costs this calendar alone: the others
/// get a further one. Main thread only; shared by the coroutines.
class CalendarExpander {
public:
    struct Outcome {
        /// Incomplete where it was cut short.
        Expansion expansion;
        /// Calendar text of what matters in the remembered span, where that was asked for and could be had.
        std::optional<QByteArray> text;
    };
    /// Runs on a worker thread. Values in, values out.
    using Work = std::function<Outcome(const ExpansionRequest &request, ExpansionControl &control)>;

    explicit CalendarExpander(std::shared_ptr<CalendarServices> services);

    /// Fails where the expansion cannot be stopped, or where earlier ones have not stopped yet.
    static QCoro::Task<std::expected<Outcome, CalendarError>> expand(std::shared_ptr<CalendarExpander> self,
                                                                     CalendarQuestion question, Work work);

    /// The calendar changed: what was too slow may be gone.
    void forgetSuspects() { m_suspects.clear(); }

    /// Makes what runs end at the next chance.
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
