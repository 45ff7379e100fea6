// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/LinuxSystemWatcher.h"

#include <utility>

namespace corvane {

LinuxSystemWatcher::LinuxSystemWatcher(const QDBusConnection &systemBus, const QDBusConnection &sessionBus,
                                       const QString &zoneFile, std::unique_ptr<WallClockAlarm> alarm)
    : m_sleep(systemBus)
    , m_network(systemBus, sessionBus)
    , m_clock(std::move(alarm))
    , m_zone(zoneFile)
{
    connect(&m_sleep, &SleepWatcher::woke, this, &SystemWatcher::woke);
    connect(&m_network, &NetworkWatcher::cameBack, this, &SystemWatcher::networkCameBack);
    connect(&m_clock, &ClockSetWatcher::clockWasSet, this, &SystemWatcher::clockWasSet);
    connect(&m_zone, &TimeZoneWatcher::zoneChanged, this, &SystemWatcher::timeZoneChanged);
}

} // namespace corvane
