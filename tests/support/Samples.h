// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/Lesson.h"
#include "Corvane/Utilities/DateText.h"

#include <QDateTime>
#include <QTimeZone>

namespace corvane {

/// 2026-11-16 (a Monday) at `time` ("09:56:00", "09:59:30.5") in UTC.
inline Date at(const char *time)
{
    const auto text = QLatin1String("2026-11-16T") + QLatin1String(time) + QLatin1Char('Z');
    const QDateTime moment = QDateTime::fromString(text, Qt::ISODateWithMs);
    Q_ASSERT(moment.isValid());
    return fromDateTime(moment);
}

inline Seconds minutes(double count)
{
    return Seconds{count * 60};
}

/// A lesson with the platform's standard profile.
inline Lesson sampleLesson(const QString &student, Date start, Seconds duration,
                           TeachingPlatform platform = TeachingPlatform::zoom)
{
    return {.id = QUuid::createUuid(),
            .studentName = student,
            .platform = platform,
            .startTime = start,
            .duration = duration,
            .profile = PlatformProfile::defaults().at(platform)};
}

/// Anna's lesson of 25 minutes.
inline Lesson lessonAt(const char *time)
{
    return sampleLesson(QStringLiteral("Anna"), at(time), minutes(25));
}

} // namespace corvane
