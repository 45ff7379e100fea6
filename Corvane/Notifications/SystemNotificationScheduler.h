// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/Lesson.h"
#include "Corvane/Notifications/UserNotificationCenter.h"
#include "Corvane/Utilities/DebugLogService.h"

#include <qcoro/qcorotask.h>

#include <QObject>
#include <QPointer>
#include <QString>

#include <expected>
#include <optional>
#include <vector>

namespace corvane {

/// The safety net for the banners, which need the running program: hands dated notifications for each
/// remaining step of each remaining lesson to a service that outlives the program. They appear whether or not
/// Quillet is running, and quitting does not withdraw them.
///
/// Main thread only. Once the scheduler is destroyed, a run in progress makes no further requests.
class SystemNotificationScheduler final : public QObject {
    Q_OBJECT

public:
    /// Borrows `center` and `logger`. Every request's identifier begins with `identifierPrefix`; only
    /// requests with that prefix are ever withdrawn.
    SystemNotificationScheduler(UserNotificationCenter &center, DebugLogService &logger,
                                QString identifierPrefix, QObject *parent = nullptr);

    /// Replaces the pending notifications with those of `lessons`, which are all of today's. Does nothing if
    /// the same lessons were scheduled last. The view model calls it after each reload. Errors are logged,
    /// not returned; the next call tries again. If two runs overlap, the one that ends last wins.
    QCoro::Task<void> scheduleBackupNotifications(std::vector<Lesson> lessons);

    /// Makes the next call schedule even unchanged lessons. For a clock that was set: steps that were past by
    /// the wrong time, and so are no longer pending, are in the future again.
    void forgetSchedule();

private:
    using Self = QPointer<SystemNotificationScheduler>;
    static QCoro::Task<std::expected<bool, Failure>> replacePending(Self self, std::vector<Lesson> lessons);
    static QCoro::Task<std::expected<void, Failure>> removePending(Self self);
    static QCoro::Task<std::expected<void, Failure>> add(Self self, std::vector<Lesson> lessons);
    void log(const QString &message);

    UserNotificationCenter &m_center;
    DebugLogService &m_logger;
    QString m_identifierPrefix;
    std::optional<QString> m_lastScheduleSignature; ///< of the last completely scheduled lessons
    int m_timesForgotten = 0; ///< a run that began before the last forgetSchedule() stores no signature
};

} // namespace corvane
