// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/App/AppDelegate.h"
#include "Corvane/App/LiveServices.h"
#include "Corvane/Platform/Linux/Freedesktop/SessionLockWatcher.h"
#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItem.h"
#include "Corvane/Services/MenuBarViewModel.h"

#include <memory>

namespace corvane {

/// The running program: its services, the view model, the status item. Made once, when it is known that no
/// other one runs; monitoring starts by itself.
class CorvaneApp {
public:
    CorvaneApp();

    [[nodiscard]] MenuBarViewModel &viewModel() { return *m_viewModel; }
    [[nodiscard]] DebugLogService &logger() { return *m_services.debugLogger; }

private:
    void showStatusItem();
    void watchSessionLock();

    AppDelegate m_appDelegate;
    LiveServices m_services;
    std::unique_ptr<MenuBarViewModel> m_viewModel;
    std::unique_ptr<StatusNotifierItem> m_statusItem;
    std::unique_ptr<SessionLockWatcher> m_sessionLock;
};

} // namespace corvane
