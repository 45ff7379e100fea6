// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

namespace corvane {

/// What makes the program one that lives in the status item host alone. (Nothing of it stands in a task bar
/// because none of its windows is of the kind that does.)
class AppDelegate {
public:
    /// Called once, after the application object is made and before any window is.
    void applicationDidFinishLaunching() const;

    /// Closing the last window never ends the program; only the command to quit does.
    [[nodiscard]] bool applicationShouldTerminateAfterLastWindowClosed() const { return false; }
};

} // namespace corvane
