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

/// What is done for the calendars beside loading them once a minute: they are kept fresh, and the
/// bell and a notification tell of those whose lessons are missing.
class CalendarCare {
public:
    /// What is passed is borrowed. While `bell` lives, `tellGaps` gets the bell's words for what the
    /// calendars lack, or an empty text, whenever a calendar has changed.
    CalendarCare(const LiveServices &services, const SystemWatcher &systemWatcher,
                 MenuBarViewModel &viewModel, QObject &bell, std::function<void(const QString &)> tellGaps);

    /// Asks online calendars for news.
    void refresh() { m_refresher.refresh(); }

private:
    CalendarRefresher m_refresher;
    CalendarGapNotice m_gapNotice;
};

} // namespace corvane
