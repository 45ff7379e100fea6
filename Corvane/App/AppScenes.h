// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/MenuBarViewModel.h"
#include "Corvane/Services/MenuCommands.h"
#include "Corvane/Utilities/WindowSystem.h"
#include "Corvane/Views/DebugWindowView.h"
#include "Corvane/Views/MenuBarPanel.h"
#include "Corvane/Views/UserManualPDF.h"
#include "Corvane/Views/WindowScenes.h"

#include <functional>

namespace corvane {

class Screens;
class SystemSounds;

/// Everything the program shows besides banners: the menu bar panel that the bell opens, and the windows that
/// the commands open. Each is created only when it is opened.
class AppScenes {
public:
    /// Actions that affect more than the panel and the windows.
    struct ProgramActions {
        /// Ends the program.
        std::function<void()> quit;
        /// Asks online calendars for new events.
        std::function<void()> refreshCalendars;
    };
    /// Borrows the objects passed in.
    AppScenes(MenuBarViewModel &viewModel, const DebugSources &debugSources, const Screens &screens,
              SystemSounds &sounds, WindowSystem &windowSystem, ProgramActions actions);

    [[nodiscard]] MenuBarPanel &menuBarPanel() { return m_menuBarPanel; }

    /// What the native menu's commands do.
    [[nodiscard]] const MenuActions &menuActions() const { return m_menuActions; }

private:
    void open(const WindowName &window);
    void addWindows();

    MenuBarViewModel &m_viewModel;
    DebugSources m_debugSources;
    WindowSystem &m_windowSystem;
    std::function<void()> m_refreshCalendars;
    UserManualPDF m_manual;
    MenuActions m_menuActions;
    WindowScenes m_windows;
    MenuBarPanel m_menuBarPanel;
};

} // namespace corvane
