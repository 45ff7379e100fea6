// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/SystemWatcher.h"
#include "Corvane/Utilities/DebugLogService.h"

#include <QByteArray>
#include <QObject>

#include <functional>

namespace corvane {

/// Restarts the program when the machine's time zone differs from that at the program's start, because a
/// DayCalendar keeps its zone. Main thread only.
class ZoneFollower final : public QObject {
    Q_OBJECT

public:
    /// Borrows the objects passed in. `startZone` is the result of systemTimeZoneId() from before the
    /// services were built; a zone that has changed since is noticed on the next turn of the event loop.
    /// `restart` is called at most once.
    ZoneFollower(const SystemWatcher &watcher, QByteArray startZone, DebugLogService &logger,
                 std::function<void()> restart, QObject *parent = nullptr);

private:
    void look();

    QByteArray m_startZone;
    DebugLogService &m_logger;
    std::function<void()> m_restart; ///< empty once called
};

} // namespace corvane
