// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/ZoneFollower.h"

#include "Corvane/Utilities/Clock.h"
#include "Corvane/Utilities/DayCalendar.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

ZoneFollower::ZoneFollower(const SystemWatcher &watcher, QByteArray startZone, DebugLogService &logger,
                           std::function<void()> restart, QObject *parent)
    : QObject(parent)
    , m_startZone(std::move(startZone))
    , m_logger(logger)
    , m_restart(std::move(restart))
{
    connect(&watcher, &SystemWatcher::timeZoneChanged, this, &ZoneFollower::look);
    // The watcher does not report earlier changes.
    QMetaObject::invokeMethod(this, &ZoneFollower::look, Qt::QueuedConnection);
}

void ZoneFollower::look()
{
    const QByteArray zone = systemTimeZoneId();
    if (zone == m_startZone || !m_restart) {
        return;
    }
    m_logger.log(u"time zone changed from="_s + QString::fromUtf8(m_startZone) + u" to="_s +
                 QString::fromUtf8(zone) + u"; restarting"_s);
    std::exchange(m_restart, {})();
}

} // namespace corvane
