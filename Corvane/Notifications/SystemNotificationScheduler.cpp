// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Notifications/SystemNotificationScheduler.h"

#include "Corvane/Notifications/BackupNotifications.h"
#include "Corvane/Utilities/Clock.h"
#include "Corvane/Utilities/DateText.h"
#include "Corvane/Utilities/PlainText.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// Two schedules are equal if the names and starts of their lessons are.
QString scheduleSignature(const std::vector<Lesson> &lessons)
{
    QStringList items;
    for (const Lesson &lesson : lessons) {
        items.append(lesson.studentName + u'|' + defaultDoubleText(secondsSince1970(lesson.startTime)));
    }
    return items.join(u';');
}

} // namespace

SystemNotificationScheduler::SystemNotificationScheduler(UserNotificationCenter &center,
                                                         DebugLogService &logger, QString identifierPrefix,
                                                         QObject *parent)
    : QObject(parent)
    , m_center(center)
    , m_logger(logger)
    , m_identifierPrefix(std::move(identifierPrefix))
{
}

QCoro::Task<void> SystemNotificationScheduler::scheduleBackupNotifications(std::vector<Lesson> lessons)
{
    std::erase_if(lessons, [now = currentDate()](const Lesson &lesson) { return !(lesson.endTime() > now); });
    const QString newSignature = scheduleSignature(lessons);
    if (m_lastScheduleSignature == newSignature) {
        co_return;
    }
    const Self self(this);
    const int timesForgotten = m_timesForgotten;
    const auto replaced = co_await replacePending(self, lessons);
    if (self == nullptr) {
        co_return;
    }
    if (!replaced) {
        log(u"system notification scheduling failed error="_s + replaced.error().localizedDescription);
        co_return;
    }
    if (!*replaced) {
        log(u"system notification permission was not granted"_s);
        co_return;
    }
    if (timesForgotten == m_timesForgotten) {
        m_lastScheduleSignature = newSignature;
    }
    log(u"scheduled system backup notifications lessons="_s + QString::number(lessons.size()));
}

void SystemNotificationScheduler::forgetSchedule()
{
    m_lastScheduleSignature.reset();
    ++m_timesForgotten;
}

/// Replaces the pending notifications with those of `lessons`. Returns false, and changes nothing, if
/// notifications are not permitted.
QCoro::Task<std::expected<bool, Failure>>
SystemNotificationScheduler::replacePending(Self self, std::vector<Lesson> lessons)
{
    const auto granted = co_await self->m_center.requestAuthorization();
    if (!granted || !*granted) {
        co_return granted;
    }
    const auto removed = co_await removePending(self);
    if (!removed) {
        co_return std::unexpected(removed.error());
    }
    const auto added = co_await add(self, lessons);
    if (!added) {
        co_return std::unexpected(added.error());
    }
    co_return true;
}

QCoro::Task<std::expected<void, Failure>> SystemNotificationScheduler::removePending(Self self)
{
    if (self == nullptr) {
        co_return {};
    }
    const auto pending = co_await self->m_center.pendingNotificationRequests();
    if (!pending) {
        co_return std::unexpected(pending.error());
    }
    if (self == nullptr) {
        co_return {};
    }
    QStringList own;
    for (const QString &identifier : *pending) {
        if (identifier.startsWith(self->m_identifierPrefix)) {
            own.append(identifier);
        }
    }
    co_return co_await self->m_center.removePendingNotificationRequests(own);
}

QCoro::Task<std::expected<void, Failure>> SystemNotificationScheduler::add(Self self,
                                                                           std::vector<Lesson> lessons)
{
    for (const Lesson &lesson : lessons) {
        if (self == nullptr) {
            co_return {};
        }
        const auto requests = backupNotifications(lesson, self->m_identifierPrefix);
        for (const NotificationRequest &request : requests) {
            // Reads the clock again, because adding the earlier ones takes time.
            if (self == nullptr || !(request.fireDate > currentDate())) {
                continue;
            }
            const auto added = co_await self->m_center.add(request);
            if (!added) {
                co_return std::unexpected(added.error());
            }
        }
    }
    co_return {};
}

void SystemNotificationScheduler::log(const QString &message)
{
    m_logger.log(plainText(message));
}

} // namespace corvane
