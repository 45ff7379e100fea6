// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/CalendarMonitor.h"
#include "Corvane/Notifications/DirectNotifications.h"
#include "Corvane/Notifications/Screens.h"
#include "Corvane/Notifications/SystemSounds.h"
#include "Corvane/Notifications/UserNotificationCenter.h"
#include "Corvane/Services/MenuBarViewModel.h"
#include "Corvane/Services/Readiness.h"
#include "Corvane/Utilities/DayCalendar.h"
#include "Corvane/Utilities/DebugLogService.h"

#include <qcoro/qcorotask.h>

#include <QObject>
#include <QPointer>

#include <optional>

namespace corvane {

/// Checks once a day, twenty minutes before the first lesson, that everything the day needs is available, and
/// reports what is missing in the log and by one quiet notification. Main thread only.
class FirstLessonLook final : public QObject {
    Q_OBJECT

public:
    /// What is checked; all borrowed.
    struct Sources {
        const MenuBarViewModel &viewModel;
        const CalendarMonitor &calendars;
        const Screens &screens;
        SystemSounds &sounds;
        UserNotificationCenter &center;
        DirectNotifications &directNotifications; ///< used if the center fails
    };

    /// `backupPrefix` is the prefix of backup identifiers. Borrows `logger`.
    FirstLessonLook(const Sources &sources, QString backupPrefix, DebugLogService &logger,
                    QObject *parent = nullptr);

    /// Only what is still missing after this time is reported: the program may just be starting.
    static constexpr Seconds patience{30};

    /// A silent sound from the program's own sound theme, to test whether sounds can be played.
    [[nodiscard]] static QString silentSound();

private:
    using Self = QPointer<FirstLessonLook>;

    void update();
    static QCoro::Task<void> look(Self self);
    static QCoro::Task<Readiness> examine(Self self);
    static QCoro::Task<void> tell(Self self, Readiness found);
    void log(const QString &message);

    Sources m_sources;
    QString m_backupPrefix;
    DebugLogService &m_logger;
    DayCalendar m_calendar = DayCalendar::current();
    std::optional<Date> m_lastLook;
};

} // namespace corvane
