// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"

#include <QByteArray>
#include <QString>
#include <QTimeZone>

namespace corvane {

/// A half-open interval of time: the start is included, the end is not.
struct DateInterval {
    Date start;
    Date end;

    friend bool operator==(const DateInterval &, const DateInterval &) = default;
};

/// The identifier of the machine's current time zone. If the zone is set as a path to its rules, this is the
/// zone's name where it can be derived, else the path.
[[nodiscard]] QByteArray systemTimeZoneId();

/// The user's calendar: the bounds of days in one time zone.
class DayCalendar {
public:
    explicit DayCalendar(const QTimeZone &timeZone) : m_timeZone(timeZone) {}

    /// The calendar of the user's current time zone, which does not follow later changes. UTC if the
    /// machine's zone is unknown.
    [[nodiscard]] static DayCalendar current();

    /// The first moment of the day of `date`: midnight; the first of two if a clock change repeats it; the
    /// moment after the gap if a clock change skips it.
    [[nodiscard]] Date startOfDay(Date date) const;

    /// From the start of the day of `date` to the start of the next: 23, 24 or 25 hours, or whatever the zone
    /// defines.
    [[nodiscard]] DateInterval dayInterval(Date date) const;

    [[nodiscard]] bool isInSameDay(Date left, Date right) const;

    /// For example "Europe/Berlin".
    [[nodiscard]] QString timeZoneIdentifier() const;

private:
    QTimeZone m_timeZone;
};

} // namespace corvane
