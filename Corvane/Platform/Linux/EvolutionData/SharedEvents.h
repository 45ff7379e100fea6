// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/CalendarExpander.h"

#include <qcoro/qcorotask.h>

#include <QByteArray>
#include <QDeadlineTimer>

#include <memory>
#include <optional>
#include <vector>

namespace corvane {

/// The events that several files contain: an invitation saved twice, its cancellation, a changed instance
/// apart from its series. Of several revisions the newest counts. Main thread only; the owner must outlive
/// all calls.
class SharedEvents {
public:
    explicit SharedEvents(std::shared_ptr<CalendarServices> services);

    /// Adds the events of `texts`, one calendar text per file, to `answers`.
    QCoro::Task<void> answer(CalendarQuestion question, std::vector<QByteArray> texts,
                             QDeadlineTimer deadline, CalendarAnswers &answers);

private:
    using Outcome = std::expected<CalendarExpander::Outcome, CalendarError>;
    struct Known {
        CalendarQuestion question;
        std::vector<QByteArray> texts;
        Pending<std::shared_ptr<Outcome>> outcome;
    };
    static QCoro::Task<void> expand(std::shared_ptr<CalendarServices> services,
                                    std::shared_ptr<CalendarExpander> expander, std::shared_ptr<Known> known);

    std::shared_ptr<CalendarServices> m_services;
    std::shared_ptr<CalendarExpander> m_expander;
    std::shared_ptr<Known> m_known;
    /// The last complete one.
    std::shared_ptr<Known> m_last;
};

} // namespace corvane
