// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/App/AppDelegate.h"
#include "Corvane/App/AppScenes.h"
#include "Corvane/App/CalendarCare.h"
#include "Corvane/App/LiveServices.h"
#include "Corvane/App/MachineCare.h"
#include "Corvane/Platform/Linux/Freedesktop/AgentGreeting.h"
#include "Corvane/Platform/Linux/Freedesktop/DesktopStatusItem.h"
#include "Corvane/Platform/Linux/Freedesktop/SessionLockWatcher.h"
#include "Corvane/Platform/Linux/Toolkit/ToolkitWindowSystem.h"
#include "Corvane/Services/Bell.h"
#include "Corvane/Services/FirstLessonLook.h"
#include "Corvane/Services/MenuBarViewModel.h"
#include "Corvane/Utilities/DesktopAppearance.h"
#include "Corvane/Utilities/RequestGate.h"

#include <QByteArray>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>

namespace corvane {

/// The running program: its services, the view model, the status item, the menu bar panel and the windows.
/// Created once, after SingleInstance has ruled out another instance; starts monitoring at once.
class CorvaneApp {
public:
    /// Who started the program: at login, nothing opens by itself.
    enum class StartedBy { user, login };

    /// `restart` shuts the program down cleanly and starts it again.
    CorvaneApp(StartedBy startedBy, std::function<void()> restart);

    /// Shows the program because a second start or the desktop asked for it. `token` (the activation token)
    /// may be empty.
    void activate(const QString &token);

    [[nodiscard]] DebugLogService &logger() { return *m_services.debugLogger; }

private:
    void showStatusItem();
    void watchForHost();
    void offerMenu();
    void watchSessionLock();
    void greetAgent();
    void followAppearance();

    /// Without a host for the bell for this long, the desktop counts as having none.
    static constexpr std::chrono::seconds hostTimeout{60};

    /// The same after a start by hand, when the desktop's panel is long up.
    static constexpr std::chrono::seconds startTimeout{10};

    /// A person never repeats a start or a command faster than this.
    static constexpr Seconds shortestPause{0.1};

    QByteArray m_startZone;
    AppDelegate m_appDelegate;
    LiveServices m_services;
    std::unique_ptr<MenuBarViewModel> m_viewModel;
    ToolkitWindowSystem m_windowSystem;
    std::unique_ptr<AppScenes> m_scenes;
    std::unique_ptr<DesktopStatusItem> m_statusItem;
    std::unique_ptr<Bell> m_bell;
    /// Limit the rate of requests that arrive over the bus. A click that opens the panel and the next one,
    /// which closes it, must both count even if a program clicks, so the pause between clicks is short.
    RequestGate m_clicks{Seconds{0.02}};
    RequestGate m_secondStarts{shortestPause};
    QTimer m_hostTimer;
    bool m_mayOpenByItself;
    std::unique_ptr<SessionLockWatcher> m_sessionLock;
    std::unique_ptr<MachineCare> m_machineCare;
    std::unique_ptr<CalendarCare> m_calendarCare;
    std::unique_ptr<FirstLessonLook> m_firstLessonLook;
    std::unique_ptr<DesktopAppearance> m_appearance;
    std::unique_ptr<AgentGreeting>
        m_agentGreeting; ///< destroyed first: tells the agent that this exit is intended
};

} // namespace corvane
