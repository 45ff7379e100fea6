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

/// The system's word on itself: the session manager, NetworkManager or the desktop's portal, the kernel, and
/// the file of the time zone. Main thread only.
class LinuxSystemWatcher final : public SystemWatcher {
    Q_OBJECT

public:
    /// Buses that are not there tell nothing. `zoneFile` decides the machine's time zone.
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
