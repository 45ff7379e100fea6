// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/SystemWatcher.h"
#include "Corvane/Utilities/DebugLogService.h"

#include <QByteArray>
#include <QObject>

#include <functional>

namespace corvane {

/// Has the program start anew when the machine stands in another time zone than the one that the program
/// started in: whatever counts days keeps the zone of its start. Main thread only.
class ZoneFollower final : public QObject {
    Q_OBJECT

public:
    /// `startZone` is what systemTimeZoneId() said before the services were built; a zone that changed since
    /// is noticed on the next turn of the event loop. `restart` is called once at most. What is passed is
    /// borrowed.
    ZoneFollower(const SystemWatcher &watcher, QByteArray startZone, DebugLogService &logger,
                 std::function<void()> restart, QObject *parent = nullptr);

private:
    void look();

    QByteArray m_startZone;
    DebugLogService &m_logger;
    std::function<void()> m_restart; ///< empty once called
};

} // namespace corvane
