// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"

#include <QDateTime>
#include <QLocale>
#include <QString>

namespace corvane {

/// `date` as a QDateTime in UTC, rounded down to the millisecond.
[[nodiscard]] QDateTime toDateTime(Date date);

/// The Date of a valid `dateTime`, to the millisecond.
[[nodiscard]] Date fromDateTime(const QDateTime &dateTime);

/// ISO 8601 in UTC with milliseconds, for example 2026-11-15T09:00:00.123Z: the time stamp of a log line.
[[nodiscard]] QString iso8601Text(Date date);

/// For example "2026-11-15 09:00:00 +0000": a date inside a log line, always in UTC.
[[nodiscard]] QString descriptionText(Date date);

/// The short time format of `locale`, as Qt defines it, with ordinary spaces only: newer locale data has a
/// narrow no-break space before AM and PM, which no keyboard has.
[[nodiscard]] QString shortTimeFormat(const QLocale &locale);

/// The local time of day of `date`, as short as `locale` writes it and without seconds: "09:05", "9:05 AM".
[[nodiscard]] QString timeOfDayText(Date date, const QLocale &locale);

/// The shortest text that reads back as the same double: with a fractional part, 1731657600.0, or in
/// scientific notation below 1e-4 and from 1e16 on.
[[nodiscard]] QString defaultDoubleText(double value);

} // namespace corvane
