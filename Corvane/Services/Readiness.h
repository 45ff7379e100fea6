// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/CalendarMonitor.h"
#include "Corvane/Models/Lesson.h"
#include "Corvane/Utilities/Clock.h"
#include "Corvane/Utilities/DayCalendar.h"

#include <QLocale>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace corvane {

/// What a day of lessons needs, and whether it is available.
struct Readiness {
    std::vector<CalendarStatus> unansweredCalendars{};
    bool hasScreen = true;          ///< a banner can be shown
    bool hasSound = true;           ///< the sound server answers
    bool showsNotifications = true; ///< the desktop does, and permits Quillet to
    bool hasBackups = true;         ///< the notification agent holds the lessons' backups

    friend bool operator==(const Readiness &, const Readiness &) = default;
};

/// The rules and texts of the check before the first lesson of a day.
namespace readiness {

/// The start of the day's first lesson if a check is due: from twenty minutes before the start until the
/// start. If Quillet starts within that time, it checks at once; if it starts later, not at all.
[[nodiscard]] std::optional<Date> dueLook(const std::vector<Lesson> &lessons, Date now);

/// The calendars without an answer on the day of `now`. Files that contain no calendar are not included.
[[nodiscard]] std::vector<CalendarStatus> unanswered(const std::vector<CalendarStatus> &calendars, Date now,
                                                     const DayCalendar &calendar);

/// Whether `pending`, the identifiers that the agent holds, includes every backup of `lessons` that is due in
/// more than a minute.
[[nodiscard]] bool hasBackups(const std::vector<Lesson> &lessons, const QStringList &pending,
                              const QString &identifierPrefix, Date now);

/// What is wrong, in a word each, for the log; empty if nothing is.
[[nodiscard]] QString problems(const Readiness &found);

[[nodiscard]] QString title();

/// What is wrong and what to do about it, in a sentence or two each.
[[nodiscard]] QString body(const Readiness &found, Date now, const QLocale &locale);

} // namespace readiness

} // namespace corvane
