// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/App/LiveServices.h"
#include "Corvane/Platform/Linux/Freedesktop/LinuxSystemWatcher.h"
#include "Corvane/Services/MenuBarViewModel.h"
#include "Corvane/Services/ReloadAfterJump.h"

namespace corvane {

/// What is done when something happens to the machine that the program runs on.
class MachineCare {
public:
    /// What is passed is borrowed.
    MachineCare(const LiveServices &services, MenuBarViewModel &viewModel);

    [[nodiscard]] const SystemWatcher &systemWatcher() const { return m_systemWatcher; }

private:
    LinuxSystemWatcher m_systemWatcher;
    ReloadAfterJump m_reloadAfterJump;
};

} // namespace corvane
