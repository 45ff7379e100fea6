// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/MachineCare.h"

#include <QDBusConnection>

namespace corvane {

MachineCare::MachineCare(const LiveServices &services, MenuBarViewModel &viewModel)
    : m_systemWatcher(QDBusConnection::systemBus(), QDBusConnection::sessionBus())
    , m_reloadAfterJump(m_systemWatcher, viewModel, *services.systemNotificationScheduler)
{
}

} // namespace corvane
