// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Notifications/BackupNotifications.h"

#include <QtGlobal>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// Seconds since 1970 UTC, truncated towards zero.
qint64 truncatedSeconds(Date date)
{
    // The first double out of range; its negative is still in range.
    constexpr double limit = 9223372036854775808.0;
    const double seconds = secondsSince1970(date);
    // Written so that NaN fails too.
    if (!(seconds >= -limit && seconds < limit)) {
        qFatal("a lesson starts %g seconds after 1970, which no date does", seconds);
    }
    return static_cast<qint64>(seconds);
}

} // namespace

std::array<NotificationRequest, 5> backupNotifications(const Lesson &lesson, const QString &identifierPrefix)
{
    const QString &student = lesson.studentName;
    const Date start = lesson.startTime;
    const Date end = lesson.endTime();
    const PlatformProfile &profile = lesson.profile;
    const QString identifierSuffix = u'.' + QString::number(truncatedSeconds(start)) + u'.' + student;

    const auto request = [&](const QString &kind, Date fireDate, const QString &title, const QString &body,
                             Date expirationDate) {
        return NotificationRequest{.identifier = identifierPrefix + kind + identifierSuffix,
                                   .title = title,
                                   .body = body,
                                   .categoryIdentifier = u"quillet.lesson"_s,
                                   .fireDate = fireDate,
                                   .expirationDate = expirationDate};
    };
    return {
        // The text is fixed; only the fire date follows preparationLeadTime.
        request(u"prepare"_s, start - profile.preparationLeadTime, u"Quillet: prepare"_s,
                student + u" starts in 4 minutes."_s, start),
        request(u"one-minute"_s, start - Seconds{60}, u"Quillet: 1 minute"_s,
                student + u" starts in 1 minute."_s, start),
        request(u"join"_s, start - profile.joinEarlyTime, u"Quillet: join now"_s,
                u"Join "_s + student + u" now."_s, start),
        request(u"start"_s, start - Seconds{20}, u"Quillet: START NOW"_s,
                student + u" starts in 20 seconds."_s, start),
        request(u"finish"_s, end - profile.finishUpLeadTime, u"Quillet: finish up"_s,
                u"Finish "_s + student + u" now."_s, end),
    };
}

} // namespace corvane
