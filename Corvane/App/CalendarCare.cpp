// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/CalendarCare.h"

#include "Corvane/Utilities/Spawn.h"

#include <QDBusConnection>

namespace corvane {

CalendarCare::CalendarCare(const LiveServices &services, MenuBarViewModel &viewModel)
    : m_systemWatcher(QDBusConnection::systemBus(), QDBusConnection::sessionBus())
    , m_refresher(*services.eventStore, m_systemWatcher, [&viewModel] { spawn(viewModel.reloadLessons()); })
{
    refresh();
}

} // namespace corvane
