// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/LaunchAtLogin.h"

namespace corvane {

void LaunchAtLogin::configure(bool enabled, LoginItem &loginItem)
{
    // The user could do nothing about a failure here.
    [[maybe_unused]] const auto result = enabled ? loginItem.registerItem() : loginItem.unregisterItem();
}

} // namespace corvane
