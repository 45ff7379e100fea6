// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/CalendarMemory.h"
#include "Corvane/Platform/Linux/EvolutionData/CalendarQuestion.h"
#include "Corvane/Platform/Linux/EvolutionData/CalendarSource.h"
#include "Corvane/Platform/Linux/Waiting/Pending.h"

#include <qcoro/qcorotask.h>

#include <QDeadlineTimer>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace corvane {

struct CalendarServices;

/// The calendars of one source as remembered on disk, used if the source does not even list its calendars.
/// Main thread only. The owner must outlive all calls.
class RememberedCalendars {
public:
    /// `prefix` is that of the identifiers of the source's calendars.
    RememberedCalendars(std::shared_ptr<CalendarServices> services, QString prefix);

    /// Whether there are any. Ends at `deadline`.
    QCoro::Task<bool> areThere(QDeadlineTimer deadline);

    /// Their identifiers. Ends at `deadline`.
    QCoro::Task<QStringList> identifiers(QDeadlineTimer deadline);

    /// Adds their events for `question` to `answers`. `reason` says why the source is silent.
    QCoro::Task<void> answer(CalendarQuestion question, QDeadlineTimer deadline, QString reason,
                             CalendarAnswers &answers);

private:
    using Calendars = std::vector<RememberedCalendar>;

    std::shared_ptr<CalendarServices> m_services;
    QString m_prefix;
    std::optional<Pending<std::shared_ptr<Calendars>>> m_reading;
    std::optional<Date> m_silentSince;
};

} // namespace corvane
