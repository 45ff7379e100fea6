// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"

#include <QDateTime>
#include <QLocale>
#include <QString>

namespace corvane {

/// `date` as Qt's date-time in UTC, rounded down to the millisecond.
[[nodiscard]] QDateTime toDateTime(Date date);

/// The moment that a valid `dateTime` tells, to the millisecond.
[[nodiscard]] Date fromDateTime(const QDateTime &dateTime);

/// ISO 8601 in UTC with milliseconds, for example 2026-11-15T09:00:00.123Z: the stamp of a log line.
[[nodiscard]] QString iso8601Text(Date date);

/// For example "2026-11-15 09:00:00 +0000": a date inside a log line, always in UTC.
[[nodiscard]] QString descriptionText(Date date);

/// How `locale` writes times of the day in short, as Qt takes it, with no spaces but plain ones: the narrow
/// one that newer data of the locales has before AM and PM is on no keyboard.
[[nodiscard]] QString shortTimeFormat(const QLocale &locale);

/// The time of day that `date` is on the user's clocks, as short as `locale` writes it and without seconds:
/// "09:05", "9:05 AM".
[[nodiscard]] QString timeOfDayText(Date date, const QLocale &locale);

/// The shortest text that reads back as the same double, always with a fractional part: 1731657600.0.
[[nodiscard]] QString defaultDoubleText(double value);

} // namespace corvane
