// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/MachineCare.h"

#include <QDBusConnection>

#include <utility>

namespace corvane {

MachineCare::MachineCare(const LiveServices &services, MenuBarViewModel &viewModel,
                         const QByteArray &startZone, std::function<void()> restart)
    : m_systemWatcher(QDBusConnection::systemBus(), QDBusConnection::sessionBus())
    , m_reloadAfterJump(m_systemWatcher, viewModel, *services.systemNotificationScheduler)
    , m_power(QDBusConnection::systemBus())
    , m_sleepInhibitor(QDBusConnection::sessionBus(), QDBusConnection::systemBus(), *services.debugLogger)
    , m_sleepGuard(viewModel, m_power, m_sleepInhibitor)
    , m_zoneFollower(m_systemWatcher, startZone, *services.debugLogger, std::move(restart))
{
}

} // namespace corvane
