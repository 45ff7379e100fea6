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
/// Made once, when it is known that no other one runs; monitoring starts by itself.
class CorvaneApp {
public:
    /// Who started the program: at login nothing opens that was not asked for.
    enum class StartedBy { user, login };

    /// `restart` ends the program in order and starts it anew.
    CorvaneApp(StartedBy startedBy, std::function<void()> restart);

    /// Another start of the program, or the desktop, asks it to show itself. `token` may be empty.
    void activate(const QString &token);

    [[nodiscard]] DebugLogService &logger() { return *m_services.debugLogger; }

private:
    void showStatusItem();
    void tellBell();
    void watchForHost();
    void offerMenu();
    void watchSessionLock();
    void greetAgent();
    void followAppearance();

    /// For so long no host shows the bell until the desktop counts as one that has none.
    static constexpr std::chrono::seconds hostTimeout{60};

    /// Two second starts, or two choices of one command, are further apart where a person does it.
    static constexpr Seconds shortestPause{0.1};

    QByteArray m_startZone;
    AppDelegate m_appDelegate;
    LiveServices m_services;
    std::unique_ptr<MenuBarViewModel> m_viewModel;
    ToolkitWindowSystem m_windowSystem;
    std::unique_ptr<AppScenes> m_scenes;
    std::unique_ptr<DesktopStatusItem> m_statusItem;
    QString m_gaps; ///< what the calendars lack, in the bell's words
    /// Clicks and second starts come over the bus. A click that opens and the next, which closes, are two
    /// also where a program clicks.
    RequestGate m_clicks{Seconds{0.02}};
    RequestGate m_secondStarts{shortestPause};
    QTimer m_hostTimer;
    bool m_mayOpenByItself;
    std::unique_ptr<SessionLockWatcher> m_sessionLock;
    std::unique_ptr<MachineCare> m_machineCare;
    std::unique_ptr<CalendarCare> m_calendarCare;
    std::unique_ptr<FirstLessonLook> m_firstLessonLook;
    std::unique_ptr<DesktopAppearance> m_appearance;
    std::unique_ptr<AgentGreeting> m_agentGreeting; ///< goes first: it says that this end is wanted
};

} // namespace corvane
