// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/CalendarMonitor.h"
#include "Corvane/Notifications/UserNotificationCenter.h"
#include "Corvane/Utilities/DebugLogService.h"

#include <qcoro/qcorotask.h>

#include <QHash>
#include <QObject>
#include <QPointer>

namespace corvane {

/// Tells the teacher, by one quiet notification, of a calendar whose lessons have been missing for five
/// minutes in one go. It is told once, until the calendar is back and fails anew. Main thread only.
class CalendarGapNotice final : public QObject {
    Q_OBJECT

public:
    /// What is passed is borrowed.
    CalendarGapNotice(const CalendarMonitor &monitor, UserNotificationCenter &center, DebugLogService &logger,
                      QObject *parent = nullptr);

    /// A gap that ends before is not told.
    static constexpr Seconds patience{300};

    /// Calendars whose gaps begin within so long of the first are told together, when the last has lasted
    /// long enough: one network fails them all, though not at one moment.
    static constexpr Seconds together{60};

private:
    using Self = QPointer<CalendarGapNotice>;
    struct Gap {
        Seconds since{}; ///< as uptime() counts
        bool isTold = false;
    };

    void update();
    void tellWhatIsDue();
    static QCoro::Task<void> tellAfter(Self self, Seconds duration);
    static QCoro::Task<void> notify(Self self, NotificationRequest request);

    const CalendarMonitor &m_monitor;
    UserNotificationCenter &m_center;
    DebugLogService &m_logger;
    QHash<QString, Gap> m_gaps; ///< by the calendar's identifier
};

} // namespace corvane
