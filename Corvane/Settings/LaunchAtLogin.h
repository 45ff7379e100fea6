// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/LoginItem.h"

namespace corvane {

/// Makes the program open at login, or not.
namespace LaunchAtLogin {

/// Registers or unregisters the program as a login item. A failure is ignored: the setting keeps the user's
/// choice, and the next start tries again. Main thread; called by AppSettings.
void configure(bool enabled, LoginItem &loginItem);

} // namespace LaunchAtLogin

} // namespace corvane
