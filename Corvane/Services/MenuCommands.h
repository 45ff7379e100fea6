// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace corvane {

class MenuBarViewModel;

/// A window by the identifier that it is opened by and the title that it bears.
struct WindowName {
    QString identifier;
    QString title;

    friend bool operator==(const WindowName &, const WindowName &) = default;
};

/// The program's windows.
namespace windowNames {

[[nodiscard]] WindowName setup();
[[nodiscard]] WindowName help();
[[nodiscard]] WindowName about();
[[nodiscard]] WindowName settings();
[[nodiscard]] WindowName debug();

} // namespace windowNames

/// What the commands of the menu bar panel, and of the native menu in its place, reach beyond the view model.
/// None of the functions may be empty. The functions that open a window bring one that is open to the front.
struct MenuActions {
    /// Whether there is such a window: a command that would open another one is not offered.
    std::function<bool(const WindowName &window)> hasWindow;
    /// A command was chosen that opens `window`.
    std::function<void(const WindowName &window)> openWindow;
    /// `window` opens because the content has appeared: both are to stay, and to be of use beside one
    /// another.
    std::function<void(const WindowName &window)> openWindowBeside;
    /// Ends the program at once.
    std::function<void()> quit;
};

/// One command, as a row of the menu bar panel or an entry of the native menu.
struct MenuCommand {
    QString text;
    std::function<void()> action;
    QString shortcut;         ///< a key sequence in its portable form, or empty
    bool beginsGroup = false; ///< a line stands above it
};

/// The commands from top to bottom. `viewModel` is borrowed by their actions. Main thread.
[[nodiscard]] std::vector<MenuCommand> menuCommands(MenuBarViewModel &viewModel, const MenuActions &actions);

/// Opens the setup window, on the next turn of the event loop, while setup has not been completed. Called at
/// each appearance of the commands.
void openSetupUnlessCompleted(MenuBarViewModel &viewModel, const MenuActions &actions);

/// What is to happen each time the content of the bell's menu appears: today's lessons are loaded anew, and
/// setup is opened while it has not been completed. The menu bar panel does this by itself; it is for the
/// native menu, when that is about to be shown, which anybody on the bus may say any number of times: those
/// within a second of one another are one. Returns at once.
void menuContentAppeared(MenuBarViewModel &viewModel, const MenuActions &actions);

} // namespace corvane
