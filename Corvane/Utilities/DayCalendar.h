// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"

#include <QByteArray>
#include <QString>
#include <QTimeZone>

namespace corvane {

/// A span of time, start included, end excluded.
struct DateInterval {
    Date start;
    Date end;

    friend bool operator==(const DateInterval &, const DateInterval &) = default;
};

/// The identifier of the machine's time zone as it is now. A zone that is set as a path to its rules is named
/// where that can be told.
[[nodiscard]] QByteArray systemTimeZoneId();

/// The user's calendar: where days begin and end in one time zone.
class DayCalendar {
public:
    explicit DayCalendar(const QTimeZone &timeZone) : m_timeZone(timeZone) {}

    /// The calendar of the user's time zone as it is now; a later change of the zone does not reach it. Where
    /// the machine names a zone that is not known, that is UTC.
    [[nodiscard]] static DayCalendar current();

    /// The first moment of the day that `date` lies in: midnight, the first of two where a change of the
    /// clocks repeats it, or what follows a midnight that a change leaves out.
    [[nodiscard]] Date startOfDay(Date date) const;

    /// From the start of the day of `date` to the start of the next: 23, 24 or 25 hours, or what the zone
    /// has.
    [[nodiscard]] DateInterval dayInterval(Date date) const;

    [[nodiscard]] bool isInSameDay(Date left, Date right) const;

    /// For example "Europe/Berlin".
    [[nodiscard]] QString timeZoneIdentifier() const;

private:
    QTimeZone m_timeZone;
};

} // namespace corvane
