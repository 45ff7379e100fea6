// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Failure.h"

#include <expected>

namespace corvane {

/// The program's entry among the programs that the desktop starts at login. Main thread only; each call is a
/// short local write. LaunchAtLogin calls it at each start and when the setting changes.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    /// Makes the desktop start the program at login. Idempotent.
    virtual std::expected<void, Failure> registerItem() = 0;

    /// Stops the desktop from starting the program at login. Succeeds if it is not registered.
    virtual std::expected<void, Failure> unregisterItem() = 0;
};

} // namespace corvane
