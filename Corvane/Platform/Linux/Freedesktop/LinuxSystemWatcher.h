// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Freedesktop/ClockSetWatcher.h"
#include "Corvane/Platform/Linux/Freedesktop/NetworkWatcher.h"
#include "Corvane/Platform/Linux/Freedesktop/SleepWatcher.h"
#include "Corvane/Platform/Linux/Freedesktop/TimeZoneWatcher.h"
#include "Corvane/Services/SystemWatcher.h"

#include <memory>

namespace corvane {

/// Watches logind, NetworkManager or the desktop's portal, the kernel's clocks, and the time zone file. Main
/// thread only.
class LinuxSystemWatcher final : public SystemWatcher {
    Q_OBJECT

public:
    /// A bus without a connection reports nothing. `zoneFile` determines the machine's time zone.
    LinuxSystemWatcher(const QDBusConnection &systemBus, const QDBusConnection &sessionBus,
                       const QString &zoneFile = TimeZoneWatcher::decidingFile(),
                       std::unique_ptr<WallClockAlarm> alarm = std::make_unique<KernelWallClockAlarm>());

private:
    SleepWatcher m_sleep;
    NetworkWatcher m_network;
    ClockSetWatcher m_clock;
    TimeZoneWatcher m_zone;
};

} // namespace corvane
