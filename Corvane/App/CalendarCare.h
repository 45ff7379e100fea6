// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/App/LiveServices.h"
#include "Corvane/Services/CalendarGapNotice.h"
#include "Corvane/Services/CalendarRefresher.h"
#include "Corvane/Services/MenuBarViewModel.h"
#include "Corvane/Services/StatusItem.h"
#include "Corvane/Services/SystemWatcher.h"

namespace corvane {

/// What is done for the calendars beside loading them once a minute: they are kept fresh, and the
/// bell and a notification tell of those whose lessons are missing.
class CalendarCare {
public:
    /// What is passed is borrowed.
    CalendarCare(const LiveServices &services, const SystemWatcher &systemWatcher,
                 MenuBarViewModel &viewModel, StatusItem &bell);

    /// Asks online calendars for news.
    void refresh() { m_refresher.refresh(); }

private:
    CalendarRefresher m_refresher;
    CalendarGapNotice m_gapNotice;
};

} // namespace corvane
