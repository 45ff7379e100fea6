// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/CorvaneApp.h"

#include "Corvane/App/AppEnvironment.h"
#include "Corvane/Platform/Linux/EvolutionData/LinuxEventStore.h"
#include "Corvane/Platform/Linux/Freedesktop/StatusBell.h"
#include "Corvane/Utilities/Spawn.h"

#include <QDBusConnection>

using namespace Qt::StringLiterals;

namespace corvane {

CorvaneApp::CorvaneApp()
{
    m_appDelegate.applicationDidFinishLaunching();
    const AppEnvironment environment = AppEnvironment::live(m_services);
    checkEventLoopServesCalendars(logger());
    m_viewModel = std::make_unique<MenuBarViewModel>(environment);
    showStatusItem();
    // Before the session's lock is watched: that speaks to another bus, which may take its time.
    spawn(m_viewModel->start());
    watchSessionLock();
}

void CorvaneApp::showStatusItem()
{
    m_statusItem = std::make_unique<StatusNotifierItem>(QDBusConnection::sessionBus(), statusBellImages(),
                                                        StatusNotifierItem::Desktop::current());
    QObject::connect(m_statusItem.get(), &StatusNotifierItem::registered, &logger(),
                     [this] { logger().log(u"status item registered"_s, currentDate()); });
    QObject::connect(m_statusItem.get(), &StatusNotifierItem::registrationFailed, &logger(),
                     [this](const QString &reason) {
                         logger().log(u"status item registration failed error="_s + reason, currentDate());
                     });
    const auto publishTitle = [this] { m_statusItem->setTitle(m_viewModel->menuTitle()); };
    QObject::connect(m_viewModel.get(), &MenuBarViewModel::currentActionChanged, m_statusItem.get(),
                     publishTitle);
    publishTitle();
}

void CorvaneApp::watchSessionLock()
{
    m_sessionLock =
        std::make_unique<SessionLockWatcher>(QDBusConnection::systemBus(), QDBusConnection::sessionBus());
    // A banner stands above everything, the lock screen included, where it would be read by anyone.
    const auto follow = [this](bool isLocked) {
        m_services.panels->setSessionLocked(isLocked);
        logger().log(isLocked ? u"session locked"_s : u"session unlocked"_s, currentDate());
    };
    QObject::connect(m_sessionLock.get(), &SessionLockWatcher::lockedChanged, m_viewModel.get(), follow);
    if (m_sessionLock->locked()) {
        follow(true);
    }
}

} // namespace corvane
