// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/DayCalendar.h"

#include <QByteArray>

#include <functional>

namespace corvane {

/// What a calendar is asked for: its events in one interval.
struct CalendarQuestion {
    DateInterval interval;
    /// The zone of floating times and of whole days, for example "Europe/Berlin".
    QByteArray timeZoneId;

    friend bool operator==(const CalendarQuestion &, const CalendarQuestion &) = default;
};

/// Returns the identifier of the user's time zone.
using TimeZoneId = std::function<QByteArray()>;

} // namespace corvane
