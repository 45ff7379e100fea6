// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/App/LiveServices.h"
#include "Corvane/Platform/Linux/Freedesktop/DesktopSleepInhibitor.h"
#include "Corvane/Platform/Linux/Freedesktop/LinuxSystemWatcher.h"
#include "Corvane/Platform/Linux/Freedesktop/UPowerSource.h"
#include "Corvane/Services/MenuBarViewModel.h"
#include "Corvane/Services/ReloadAfterJump.h"
#include "Corvane/Services/SleepGuard.h"
#include "Corvane/Services/ZoneFollower.h"

#include <QByteArray>

#include <functional>

namespace corvane {

/// Reacts to what happens to the machine: a clock that is set, waking, sleep, the network, the time zone.
class MachineCare {
public:
    /// Borrows the objects passed in. `startZone` is the machine's time zone from before the services were
    /// built; `restart` restarts the program.
    MachineCare(const LiveServices &services, MenuBarViewModel &viewModel, const QByteArray &startZone,
                std::function<void()> restart);

    [[nodiscard]] const SystemWatcher &systemWatcher() const { return m_systemWatcher; }

private:
    LinuxSystemWatcher m_systemWatcher;
    ReloadAfterJump m_reloadAfterJump;
    UPowerSource m_power;
    DesktopSleepInhibitor m_sleepInhibitor;
    SleepGuard m_sleepGuard;
    ZoneFollower m_zoneFollower;
};

} // namespace corvane
