// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/MenuCommands.h"

#include "Corvane/Services/MenuBarViewModel.h"
#include "Corvane/Utilities/Spawn.h"

using namespace Qt::StringLiterals;

namespace corvane {

std::vector<MenuCommand> menuCommands(MenuBarViewModel &viewModel, const MenuActions &actions)
{
    std::vector<MenuCommand> commands;
    commands.push_back({.text = u"Test Notification"_s,
                        .action = [&viewModel] { viewModel.testNotification(); },
                        .shortcut = {},
                        .beginsGroup = true});
    const auto addWindow = [&](const QString &text, const WindowName &window) {
        if (actions.hasWindow(window)) {
            commands.push_back({.text = text,
                                .action = [open = actions.openWindow, window] { open(window); },
                                .shortcut = {},
                                .beginsGroup = false});
        }
    };
    addWindow(u"Quick Start"_s, windowNames::setup());
    addWindow(u"User Manual"_s, windowNames::help());
    addWindow(u"About Quillet"_s, windowNames::about());
    addWindow(u"Settings"_s, windowNames::settings());
    addWindow(u"Show Debug Window"_s, windowNames::debug());
    commands.push_back(
        {.text = u"Quit Quillet"_s, .action = actions.quit, .shortcut = u"Ctrl+Q"_s, .beginsGroup = true});
    return commands;
}

void openSetupUnlessCompleted(MenuBarViewModel &viewModel, const MenuActions &actions)
{
    // Queued, so that the setup window ends up in front.
    QMetaObject::invokeMethod(
        &viewModel,
        [&viewModel, actions] {
            if (!viewModel.settings().hasCompletedWelcome() && actions.hasWindow(windowNames::setup())) {
                actions.openWindowBeside(windowNames::setup());
            }
        },
        Qt::QueuedConnection);
}

void menuContentAppeared(MenuBarViewModel &viewModel, const MenuActions &actions)
{
    if (viewModel.admitsMenuAppearance()) {
        spawn(viewModel.reloadLessons());
        openSetupUnlessCompleted(viewModel, actions);
    }
}

} // namespace corvane
