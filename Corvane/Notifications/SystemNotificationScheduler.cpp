// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Notifications/SystemNotificationScheduler.h"

#include "Corvane/Notifications/BackupNotifications.h"
#include "Corvane/Utilities/Clock.h"
#include "Corvane/Utilities/DateText.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// What tells one schedule from another: the names and the starts.
QString signature(const std::vector<Lesson> &lessons)
{
    QStringList items;
    for (const Lesson &lesson : lessons) {
        items.append(lesson.studentName + u'|' + defaultDoubleText(secondsSince1970(lesson.startTime)));
    }
    return items.join(u';');
}

} // namespace

SystemNotificationScheduler::SystemNotificationScheduler(UserNotificationCenter &center,
                                                         DebugLogService &logger, QString identifierPrefix)
    : m_center(center)
    , m_logger(logger)
    , m_identifierPrefix(std::move(identifierPrefix))
{
}

QCoro::Task<void> SystemNotificationScheduler::scheduleBackupNotifications(std::vector<Lesson> lessons)
{
    std::erase_if(lessons, [now = currentDate()](const Lesson &lesson) { return !(lesson.endTime() > now); });
    const QString newSignature = signature(lessons);
    if (m_lastScheduleSignature == newSignature) {
        co_return;
    }
    const auto granted = co_await m_center.requestAuthorization();
    if (!granted) {
        logFailure(granted.error());
        co_return;
    }
    if (!*granted) {
        log(u"system notification permission was not granted"_s);
        co_return;
    }
    const auto removed = co_await removePending();
    if (!removed) {
        logFailure(removed.error());
        co_return;
    }
    const auto added = co_await add(lessons);
    if (!added) {
        logFailure(added.error());
        co_return;
    }
    m_lastScheduleSignature = newSignature;
    log(u"scheduled system backup notifications lessons="_s + QString::number(lessons.size()));
}

QCoro::Task<std::expected<void, Failure>> SystemNotificationScheduler::removePending()
{
    const auto pending = co_await m_center.pendingNotificationRequests();
    if (!pending) {
        co_return std::unexpected(pending.error());
    }
    QStringList own;
    for (const QString &identifier : *pending) {
        if (identifier.startsWith(m_identifierPrefix)) {
            own.append(identifier);
        }
    }
    co_return co_await m_center.removePendingNotificationRequests(own);
}

QCoro::Task<std::expected<void, Failure>> SystemNotificationScheduler::add(std::vector<Lesson> lessons)
{
    for (const Lesson &lesson : lessons) {
        const auto requests = backupNotifications(lesson, m_identifierPrefix);
        for (const NotificationRequest &request : requests) {
            // The clock goes on while the earlier ones are being added.
            if (!(request.fireDate > currentDate())) {
                continue;
            }
            const auto added = co_await m_center.add(request);
            if (!added) {
                co_return std::unexpected(added.error());
            }
        }
    }
    co_return {};
}

void SystemNotificationScheduler::log(const QString &message)
{
    m_logger.log(message, currentDate());
}

void SystemNotificationScheduler::logFailure(const Failure &failure)
{
    log(u"system notification scheduling failed error="_s + failure.localizedDescription);
}

} // namespace corvane
