// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

namespace corvane {

/// Makes the program live in the status item host only. (It stays out of the task bar because its windows are
/// of types that task bars skip.)
class AppDelegate {
public:
    /// Called once, after the application object and before any window is created.
    void applicationDidFinishLaunching() const;

    /// Closing the last window never ends the program; only the command to quit does.
    [[nodiscard]] bool applicationShouldTerminateAfterLastWindowClosed() const { return false; }
};

} // namespace corvane
