// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/WindowNames.h"

#include <QString>

#include <functional>
#include <vector>

namespace corvane {

class MenuBarViewModel;

/// What the commands of the menu bar panel, and of the native menu that replaces it, can do beyond the view
/// model. No function may be empty. The functions that open a window bring an open one to the front.
struct MenuActions {
    /// Whether the window exists: a command for any other window is not offered.
    std::function<bool(const WindowName &window)> hasWindow;
    /// The user chose the command that opens `window`.
    std::function<void(const WindowName &window)> openWindow;
    /// `window` opens because the content has appeared: both must stay open and usable side by side.
    std::function<void(const WindowName &window)> openWindowBeside;
    /// Quits the program at once.
    std::function<void()> quit;
};

/// One command, as a row of the menu bar panel or an entry of the native menu.
struct MenuCommand {
    QString text;
    std::function<void()> action;
    QString shortcut;         ///< a key sequence in portable form, or empty
    bool beginsGroup = false; ///< a separator precedes it
};

/// The commands from top to bottom. Their actions borrow `viewModel`. Main thread.
[[nodiscard]] std::vector<MenuCommand> menuCommands(MenuBarViewModel &viewModel, const MenuActions &actions);

/// Opens the setup window on the next turn of the event loop, unless setup has been completed. Called at each
/// appearance of the commands.
void openSetupUnlessCompleted(MenuBarViewModel &viewModel, const MenuActions &actions);

/// Reacts to the appearance of the bell's menu: reloads today's lessons and opens setup unless it has been
/// completed. Only for the native menu, when it is about to be shown; the menu bar panel does the same by
/// itself. Any program on the bus may trigger it any number of times, so appearances within a second count
/// once. Returns at once.
void menuContentAppeared(MenuBarViewModel &viewModel, const MenuActions &actions);

} // namespace corvane
