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

/// The safety net under the banners, which need the running program: it hands dated notifications for each
/// remaining step of each remaining lesson to something that outlives the program. They come whether Quillet
/// runs by then or not, and nothing takes them back when it quits.
///
/// Main thread only. A run that is under way when the scheduler goes does nothing more.
class SystemNotificationScheduler final : public QObject {
    Q_OBJECT

public:
    /// `center` and `logger` are borrowed. Each request gets an identifier that begins with
    /// `identifierPrefix`, and no other request is ever taken back.
    SystemNotificationScheduler(UserNotificationCenter &center, DebugLogService &logger,
                                QString identifierPrefix, QObject *parent = nullptr);

    /// Puts the notifications of `lessons`, all of today's, in the place of those that are pending. Does
    /// nothing when the same lessons were scheduled last. Called by the view model after each reload; never
    /// fails towards it: what goes wrong is logged, and tried again by the next call. Of two runs that
    /// overlap, the one that ends last decides.
    QCoro::Task<void> scheduleBackupNotifications(std::vector<Lesson> lessons);

    /// The next call schedules also the lessons that were scheduled last. For a clock that was set: steps
    /// that were over by the wrong time, and are no longer pending, are ahead again.
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
    std::optional<QString> m_lastScheduleSignature; ///< of the lessons last scheduled completely
    int m_timesForgotten = 0;                       ///< what a run began before is not remembered at its end
};

} // namespace corvane
