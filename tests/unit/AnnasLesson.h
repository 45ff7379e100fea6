// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/Samples.h"

#include <QString>

namespace corvane {

/// 10:00:00 on the day of at(), in seconds since 1970, as in the identifiers.
inline constexpr auto tenOClock = "1794823200";

/// Anna's lesson at that time.
[[nodiscard]] inline Lesson annasLesson(TeachingPlatform platform = TeachingPlatform::zoom)
{
    return sampleLesson(QStringLiteral("Anna"), at("10:00:00"), minutes(25), platform);
}

/// The identifier of a lesson's backup at that time.
[[nodiscard]] inline QString identifier(const char *kind, const QString &student = QStringLiteral("Anna"))
{
    return QStringLiteral("quillet.backup.") + QLatin1StringView(kind) + u'.' + QLatin1StringView(tenOClock) +
           u'.' + student;
}

} // namespace corvane
