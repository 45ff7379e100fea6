// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/LaunchAtLogin.h"

namespace corvane {

void LaunchAtLogin::configure(bool enabled, LoginItem &loginItem)
{
    // There is nothing that the user could do about a failure here.
    [[maybe_unused]] const auto result = enabled ? loginItem.registerItem() : loginItem.unregisterItem();
}

} // namespace corvane
