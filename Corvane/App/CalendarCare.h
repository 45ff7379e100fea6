// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/App/LiveServices.h"
#include "Corvane/Services/CalendarGapNotice.h"
#include "Corvane/Services/CalendarRefresher.h"
#include "Corvane/Services/MenuBarViewModel.h"
#include "Corvane/Services/SystemWatcher.h"

#include <QObject>
#include <QString>

#include <functional>

namespace corvane {

/// What the calendars need besides being loaded once a minute: keeps online calendars fresh, and reports
/// calendars whose lessons are missing, in the bell and by a notification.
class CalendarCare {
public:
    /// Borrows the objects passed in. While `bell` lives, each change of a calendar calls `tellGaps` with the
    /// bell's text about missing lessons, empty if none are missing.
    CalendarCare(const LiveServices &services, const SystemWatcher &systemWatcher,
                 MenuBarViewModel &viewModel, QObject &bell, std::function<void(const QString &)> tellGaps);

    /// Asks online calendars for new events.
    void refresh() { m_refresher.refresh(); }

private:
    CalendarRefresher m_refresher;
    CalendarGapNotice m_gapNotice;
};

} // namespace corvane
