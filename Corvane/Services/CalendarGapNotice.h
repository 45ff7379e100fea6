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

/// Reports a calendar whose lessons have been missing for five minutes without a break, by one quiet
/// notification. Reports it again only if the calendar recovers and then fails anew. Main thread only.
class CalendarGapNotice final : public QObject {
    Q_OBJECT

public:
    /// Borrows the objects passed in.
    CalendarGapNotice(const CalendarMonitor &monitor, UserNotificationCenter &center, DebugLogService &logger,
                      QObject *parent = nullptr);

    /// Shorter gaps are not reported.
    static constexpr Seconds patience{300};

    /// Gaps that begin within this time of the first are reported together, once the last of them has lasted
    /// long enough: a network failure affects all calendars, but not at the same moment.
    static constexpr Seconds together{60};

private:
    using Self = QPointer<CalendarGapNotice>;
    struct Gap {
        Seconds since{}; ///< in uptime()
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
