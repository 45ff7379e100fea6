// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/LoginItem.h"

namespace corvane {

/// The switch that makes the program open at login.
namespace LaunchAtLogin {

/// Registers or unregisters the program as a login item. A failure is dropped: the setting keeps what the
/// user chose, and the next start tries again. Main thread; called by AppSettings.
void configure(bool enabled, LoginItem &loginItem);

} // namespace LaunchAtLogin

} // namespace corvane
