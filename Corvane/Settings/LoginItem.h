// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Failure.h"

#include <expected>

namespace corvane {

/// The program's entry among the things that the desktop starts when the user logs in. Main thread only; a
/// call is a short local write. Called by LaunchAtLogin, at each start and when the setting changes.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    /// Makes the desktop start the program at login. Registering again changes nothing.
    virtual std::expected<void, Failure> registerItem() = 0;

    /// Makes the desktop no longer do so. Unregistering what is not registered succeeds.
    virtual std::expected<void, Failure> unregisterItem() = 0;
};

} // namespace corvane
