// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/App/LiveServices.h"
#include "Corvane/Platform/Linux/Freedesktop/LinuxSystemWatcher.h"
#include "Corvane/Services/CalendarGapNotice.h"
#include "Corvane/Services/CalendarRefresher.h"
#include "Corvane/Services/MenuBarViewModel.h"
#include "Corvane/Services/StatusItem.h"

namespace corvane {

/// What is done for the calendars beside loading them once a minute: they are kept fresh, and the
/// bell and a notification tell of those whose lessons are missing.
class CalendarCare {
public:
    /// What is passed is borrowed.
    CalendarCare(const LiveServices &services, MenuBarViewModel &viewModel, StatusItem &bell);

    /// Asks online calendars for news.
    void refresh() { m_refresher.refresh(); }

private:
    LinuxSystemWatcher m_systemWatcher;
    CalendarRefresher m_refresher;
    CalendarGapNotice m_gapNotice;
};

} // namespace corvane
