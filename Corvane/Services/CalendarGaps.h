// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/CalendarMonitor.h"

#include <QLocale>
#include <QString>

#include <vector>

namespace corvane {

/// The texts about calendars whose lessons are missing, as pure functions. They are plain text; names in them
/// are shortened and free of line breaks.
namespace calendarGaps {

/// The calendars whose lessons are missing.
[[nodiscard]] std::vector<CalendarStatus> among(const std::vector<CalendarStatus> &calendars);

/// For the bell, for example: No answer from the calendar “Lessons”. Empty without gaps.
[[nodiscard]] QString notice(const std::vector<CalendarStatus> &gaps);

/// For a notification about at least one gap: its title, and a body that says what is missing, since when
/// (relative to `now`) and what can be done.
[[nodiscard]] QString title(const std::vector<CalendarStatus> &gaps);
[[nodiscard]] QString body(const std::vector<CalendarStatus> &gaps, Date now, const QLocale &locale);

} // namespace calendarGaps

} // namespace corvane
