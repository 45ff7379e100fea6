// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/AppScenes.h"

#include "Corvane/Notifications/SystemSounds.h"
#include "Corvane/Settings/SettingsView.h"
#include "Corvane/Utilities/InformationDictionary.h"
#include "Corvane/Utilities/Resources.h"
#include "Corvane/Utilities/Spawn.h"
#include "Corvane/Utilities/WindowPresentation.h"
#include "Corvane/Views/AboutCorvaneView.h"
#include "Corvane/Views/FirstRunSetupView.h"
#include "Corvane/Views/HelpCenterView.h"
#include "Corvane/Views/MenuBarContentView.h"

#include <QDesktopServices>

#include <memory>
#include <utility>

namespace corvane {

AppScenes::AppScenes(MenuBarViewModel &viewModel, const DebugSources &debugSources, const Screens &screens,
                     SystemSounds &sounds, WindowSystem &windowSystem, ProgramActions actions)
    : m_viewModel(viewModel)
    , m_debugSources(debugSources)
    , m_windowSystem(windowSystem)
    , m_refreshCalendars(std::move(actions.refreshCalendars))
    , m_manual(resources::folders(), &QDesktopServices::openUrl, [&sounds] { sounds.beep(); })
    , m_menuActions{
          .hasWindow = [this](const WindowName &window) { return m_windows.has(window.identifier); },
          .openWindow =
              [this](const WindowName &window) {
                  open(window);
                  m_menuBarPanel.close();
              },
          .openWindowBeside =
              [this](const WindowName &window) {
                  if (m_menuBarPanel.openedByItself()) {
                      m_windows.open(window.identifier, false);
                      return;
                  }
                  const bool wasOpen = m_windows.window(window.identifier) != nullptr;
                  m_menuBarPanel.stayOpenBesideWindows();
                  open(window);
                  // The teacher asked for the menu bar panel, so only a new window keeps the keyboard focus.
                  if (wasOpen) {
                      m_menuBarPanel.returnToFront();
                  }
              },
          .quit = std::move(actions.quit)}
    , m_windows(windowSystem, screens)
    , m_menuBarPanel([this] { return std::make_unique<MenuBarContentView>(m_viewModel, m_menuActions); },
                     screens, windowSystem)
{
    addWindows();
}

void AppScenes::open(const WindowName &window)
{
    WindowPresentation::open(
        window.identifier, window.title, [this](const QString &identifier) { m_windows.open(identifier); },
        m_windowSystem);
}

void AppScenes::addWindows()
{
    const auto add = [this](const WindowName &name, QSize defaultSize, auto makeContent) {
        m_windows.add({.identifier = name.identifier,
                       .title = name.title,
                       .defaultSize = defaultSize,
                       .makeContent = makeContent});
    };
    add(windowNames::settings(), {620, 700}, [this] {
        return std::make_unique<SettingsView>(
            m_viewModel.settings(),
            [this] {
                // The teacher also wants the lessons that are still on the servers; those may arrive later.
                m_refreshCalendars();
                return m_viewModel.reloadLessons();
            },
            [this](const WindowName &window) { open(window); });
    });
    add(windowNames::help(), {920, 620},
        [this] { return std::make_unique<HelpCenterView>(m_manual, &QDesktopServices::openUrl); });
    add(windowNames::setup(), {680, 500}, [this] {
        const auto dismiss = [this] {
            if (QWidget *window = m_windows.window(windowNames::setup().identifier)) {
                window->close();
            }
        };
        return std::make_unique<FirstRunSetupView>(m_viewModel.settings(), dismiss);
    });
    add(windowNames::about(), {460, 430}, [this] {
        return std::make_unique<AboutCorvaneView>(m_manual, InformationDictionary::main(),
                                                  &QDesktopServices::openUrl);
    });
    add(windowNames::debug(), {620, 700}, [this] {
        // It should show the calendars as they are now.
        m_refreshCalendars();
        spawn(m_viewModel.reloadLessons());
        return std::make_unique<DebugWindowView>(m_viewModel, m_debugSources, &QDesktopServices::openUrl);
    });
}

} // namespace corvane
