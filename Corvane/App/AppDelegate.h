// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

namespace corvane {

/// What makes the program one that lives in the panel alone.
class AppDelegate {
public:
    /// Called once the application object is made: nothing of the program stands in the task bar, and its
    /// windows come and go without ending it.
    void applicationDidFinishLaunching() const;

    /// Closing the last window never ends the program; only the command to quit does.
    [[nodiscard]] bool applicationShouldTerminateAfterLastWindowClosed() const { return false; }
};

} // namespace corvane
