// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/CalendarCare.h"

#include "Corvane/Services/CalendarGaps.h"
#include "Corvane/Utilities/Spawn.h"

#include <utility>

namespace corvane {

CalendarCare::CalendarCare(const LiveServices &services, const SystemWatcher &systemWatcher,
                           MenuBarViewModel &viewModel, QObject &bell,
                           std::function<void(const QString &)> tellGaps)
    : m_refresher(*services.eventStore, systemWatcher, [&viewModel] { spawn(viewModel.reloadLessons()); })
    , m_gapNotice(services.eventStore->monitor(), *services.notificationCenter, *services.debugLogger)
{
    CalendarMonitor &monitor = services.eventStore->monitor();
    QObject::connect(&monitor, &CalendarMonitor::changed, &bell, [&monitor, tellGaps = std::move(tellGaps)] {
        tellGaps(calendarGaps::notice(calendarGaps::among(monitor.calendars())));
    });
    refresh();
}

} // namespace corvane
