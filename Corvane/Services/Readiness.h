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

/// What a day of lessons needs, and whether it is there.
struct Readiness {
    std::vector<CalendarStatus> unansweredCalendars{};
    bool hasScreen = true;          ///< a banner can be shown
    bool hasSound = true;           ///< the sound server answers
    bool showsNotifications = true; ///< somebody on this desktop does, and may do so for Quillet
    bool hasBackups = true;         ///< the notification agent holds those of the lessons

    friend bool operator==(const Readiness &, const Readiness &) = default;
};

/// What is decided and said when Quillet looks, before the first lesson of a day, whether all is ready.
namespace readiness {

/// The start of the day's first lesson, when it is time to look: from twenty minutes before it until it
/// begins. Started in between, Quillet looks at once; started later, it does not look.
[[nodiscard]] std::optional<Date> dueLook(const std::vector<Lesson> &lessons, Date now);

/// The calendars that have given no answer on the day of `now`; files that hold no calendar are none.
[[nodiscard]] std::vector<CalendarStatus> unanswered(const std::vector<CalendarStatus> &calendars, Date now,
                                                     const DayCalendar &calendar);

/// Whether `pending`, the identifiers that the agent holds, has every backup of `lessons` that is due later
/// than in a minute.
[[nodiscard]] bool hasBackups(const std::vector<Lesson> &lessons, const QStringList &pending,
                              const QString &identifierPrefix, Date now);

/// What is wrong, in a word each, for the log; empty when all is well.
[[nodiscard]] QString problems(const Readiness &found);

[[nodiscard]] QString title();

/// What is wrong and what to do about it, a sentence or two each.
[[nodiscard]] QString body(const Readiness &found, Date now, const QLocale &locale);

} // namespace readiness

} // namespace corvane
