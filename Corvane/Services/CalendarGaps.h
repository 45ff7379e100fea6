// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/CalendarMonitor.h"

#include <QLocale>
#include <QString>

#include <vector>

namespace corvane {

/// What the teacher is told of calendars whose lessons are missing, as pure functions. The texts are plain;
/// names in them are cut, and free of line breaks.
namespace calendarGaps {

/// Those of `calendars` whose lessons are missing.
[[nodiscard]] std::vector<CalendarStatus> among(const std::vector<CalendarStatus> &calendars);

/// For the bell, for example: No answer from the calendar “Lessons”. Empty without gaps.
[[nodiscard]] QString notice(const std::vector<CalendarStatus> &gaps);

/// For a notification, of one gap at least: its title, and what is missing, since when, as seen at `now`, and
/// what can be done about it.
[[nodiscard]] QString title(const std::vector<CalendarStatus> &gaps);
[[nodiscard]] QString body(const std::vector<CalendarStatus> &gaps, Date now, const QLocale &locale);

} // namespace calendarGaps

} // namespace corvane
