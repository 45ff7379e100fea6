// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/CorvaneApp.h"

#include "Corvane/App/AppEnvironment.h"
#include "Corvane/Look/Style.h"
#include "Corvane/Platform/Linux/EvolutionData/LinuxEventStore.h"
#include "Corvane/Platform/Linux/Freedesktop/PortalAppearance.h"
#include "Corvane/Platform/Linux/Freedesktop/StatusBell.h"
#include "Corvane/Services/MenuCommands.h"
#include "Corvane/Services/MissingBell.h"
#include "Corvane/Services/ScheduleStatus.h"
#include "Corvane/Utilities/DayCalendar.h"
#include "Corvane/Utilities/Names.h"
#include "Corvane/Utilities/Spawn.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDBusConnection>

#include <optional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace corvane {

CorvaneApp::CorvaneApp(StartedBy startedBy, std::function<void()> restart)
    : m_startZone(systemTimeZoneId())
    , m_mayOpenByItself(startedBy == StartedBy::user)
{
    m_appDelegate.applicationDidFinishLaunching();
    const AppEnvironment environment = AppEnvironment::live(m_services);
    checkEventLoopServesCalendars(logger());
    followAppearance();
    m_viewModel = std::make_unique<MenuBarViewModel>(environment);
    const DebugSources debugSources{.calendars = m_services.eventStore->monitor(),
                                    .parser = m_services.calendarStore->parser(),
                                    .log = *m_services.debugLogger};
    m_scenes = std::make_unique<AppScenes>(
        *m_viewModel, debugSources, *m_services.screens, *m_services.sounds, m_windowSystem,
        AppScenes::ProgramActions{.quit = &QCoreApplication::quit,
                                  .refreshCalendars = [this] { m_calendarCare->refresh(); }});
    showStatusItem();
    watchForHost();
    greetAgent();
    // Starts before the session lock and the machine are watched: those use the system bus, which may be
    // slow.
    spawn(m_viewModel->start());
    watchSessionLock();
    m_machineCare = std::make_unique<MachineCare>(m_services, *m_viewModel, m_startZone, std::move(restart));
    m_calendarCare =
        std::make_unique<CalendarCare>(m_services, m_machineCare->systemWatcher(), *m_viewModel,
                                       *m_statusItem, [this](const QString &gaps) { m_bell->setGaps(gaps); });
    m_firstLessonLook = std::make_unique<FirstLessonLook>(
        FirstLessonLook::Sources{.viewModel = *m_viewModel,
                                 .calendars = m_services.eventStore->monitor(),
                                 .screens = *m_services.bannerScreens,
                                 .sounds = *m_services.sounds,
                                 .center = *m_services.notificationCenter,
                                 .directNotifications = *m_services.desktopNotifications},
        names::backupPrefix, logger());
}

void CorvaneApp::greetAgent()
{
    m_agentGreeting = std::make_unique<AgentGreeting>(QDBusConnection::sessionBus(),
                                                      [this](const QString &line) { logger().log(line); });
    QObject::connect(m_viewModel.get(), &MenuBarViewModel::lessonsChanged, m_agentGreeting.get(),
                     [this] { m_agentGreeting->setLessons(m_viewModel->lessons()); });
}

void CorvaneApp::activate(const QString &token)
{
    if (!m_secondStarts.admits(uptime())) {
        return;
    }
    logger().log(u"second start handed over"_s);
    m_windowSystem.userAsked(token);
    if (m_statusItem->isShown()) {
        m_scenes->menuBarPanel().open(std::nullopt);
    } else {
        m_scenes->menuBarPanel().openAsWindow(missingBellHint(qgetenv("XDG_CURRENT_DESKTOP")));
    }
}

void CorvaneApp::showStatusItem()
{
    m_statusItem = std::make_unique<DesktopStatusItem>(QDBusConnection::sessionBus(), statusBellImages(),
                                                       StatusNotifierItem::Desktop::current());
    QObject::connect(m_statusItem.get(), &DesktopStatusItem::registered, &logger(),
                     [this] { logger().log(u"status item registered"_s); });
    QObject::connect(m_statusItem.get(), &DesktopStatusItem::registrationFailed, &logger(),
                     [this](const QString &reason) {
                         logger().log(u"status item registration failed error="_s + reason);
                     });
    QObject::connect(m_statusItem.get(), &StatusItem::activated, m_viewModel.get(),
                     [this](std::optional<Point> position, const QString &token) {
                         if (!m_clicks.admits(uptime())) {
                             return;
                         }
                         m_windowSystem.userAsked(token);
                         m_scenes->menuBarPanel().toggle(position);
                     });
    offerMenu();
    m_bell = std::make_unique<Bell>(*m_viewModel, *m_statusItem);
}

void CorvaneApp::offerMenu()
{
    // The same commands, for a right click on the bell.
    std::vector<StatusMenuEntry> entries;
    entries.push_back({.text = scheduleStatus::title(), .action = [this] {
                           m_windowSystem.userAsked({});
                           m_scenes->menuBarPanel().toggleFromMenu();
                       }});
    for (MenuCommand &command : menuCommands(*m_viewModel, m_scenes->menuActions())) {
        if (command.beginsGroup) {
            entries.push_back({});
        }
        entries.push_back(
            {.text = command.text,
             .action = [gate = RequestGate(shortestPause), action = std::move(command.action)]() mutable {
                 if (gate.admits(uptime())) {
                     action();
                 }
             }});
    }
    m_statusItem->setMenu(std::move(entries));
    QObject::connect(m_statusItem.get(), &StatusItem::menuAboutToShow, m_viewModel.get(),
                     [this] { menuContentAppeared(*m_viewModel, m_scenes->menuActions()); });
}

void CorvaneApp::watchForHost()
{
    m_hostTimer.setSingleShot(true);
    QObject::connect(&m_hostTimer, &QTimer::timeout, &m_hostTimer, [this] {
        logger().log(u"no panel shows the bell; starting Quillet again opens its schedule"_s);
        // Tells a teacher whose desktop has no status item host that the program runs and how to reach it.
        // Once is enough.
        if (std::exchange(m_mayOpenByItself, false)) {
            m_scenes->menuBarPanel().openAsWindow(missingBellHint(qgetenv("XDG_CURRENT_DESKTOP")),
                                                  MenuBarPanel::OpenedBy::program);
        }
    });
    const auto follow = [this](bool isShown) {
        if (isShown) {
            // The teacher has seen the bell by now; a host that restarts opens nothing.
            m_mayOpenByItself = false;
            m_hostTimer.stop();
            m_scenes->menuBarPanel().removeFootnote();
        } else {
            m_hostTimer.start(m_mayOpenByItself ? startTimeout : hostTimeout);
        }
    };
    QObject::connect(m_statusItem.get(), &StatusItem::shownChanged, &m_hostTimer, follow);
    follow(m_statusItem->isShown());
}

void CorvaneApp::watchSessionLock()
{
    m_sessionLock =
        std::make_unique<SessionLockWatcher>(QDBusConnection::systemBus(), QDBusConnection::sessionBus());
    // Banners appear above everything, even the lock screen, where anyone could read them.
    const auto follow = [this](bool isLocked) {
        m_services.bannerPanels->setSessionLocked(isLocked);
        logger().log(isLocked ? u"session locked"_s : u"session unlocked"_s);
    };
    QObject::connect(m_sessionLock.get(), &SessionLockWatcher::lockedChanged, m_viewModel.get(), follow);
    if (m_sessionLock->locked()) {
        follow(true);
    }
}

void CorvaneApp::followAppearance()
{
    m_appearance = std::make_unique<PortalAppearance>(QDBusConnection::sessionBus());
    const auto follow = [this] {
        const Appearance appearance = m_appearance->appearance();
        m_services.bannerPanels->setMoves(!appearance.reducesMotion);
        if (auto *style = qobject_cast<look::Style *>(QApplication::style())) {
            style->follow(appearance);
        }
    };
    QObject::connect(m_appearance.get(), &DesktopAppearance::changed, m_appearance.get(), follow);
}

} // namespace corvane
