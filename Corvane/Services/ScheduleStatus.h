// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/TeachingAction.h"

#include <QLocale>
#include <QString>

#include <optional>
#include <vector>

/// The contents of today's schedule: pure functions of the lessons, the current action and the moment, for
/// the schedule's views.
///
/// Names in the texts are untrusted and may contain anything; show the texts as plain text.
namespace corvane::scheduleStatus {

/// The schedule's title, in the menu bar panel and in the menu that opens it.
[[nodiscard]] QString title();

/// A lesson's progress at a moment. Its start counts as `inProgress`, its end as `completed`.
enum class Progress { completed, inProgress, upcoming };

/// The label above a row's status.
enum class Badge { none, inProgress, next };

/// The background of a row.
enum class Background {
    next,       ///< red
    inProgress, ///< green
    completed,  ///< the secondary colour
    other,      ///< the primary colour
};

/// The opacity of a background's colour, 0 to 1.
[[nodiscard]] double opacity(Background background);

[[nodiscard]] Progress progress(const Lesson &lesson, Date now);

/// The statuses that every lesson reaches.
[[nodiscard]] QString inProgressText();
[[nodiscard]] QString completedText();

/// The day's list: `lessons` sorted by start; equal starts keep their order. If `lessons` is empty, the
/// lessons of `currentAction`.
[[nodiscard]] std::vector<Lesson> scheduleLessons(const std::vector<Lesson> &lessons,
                                                  const TeachingAction &currentAction);

/// The first lesson of the day's list that starts after `now`.
[[nodiscard]] std::optional<Lesson> nextLesson(const std::vector<Lesson> &scheduleLessons, Date now);

/// The visible part of the day's list: all of it, or at most three lessons around the current moment,
/// including the last completed one.
[[nodiscard]] std::vector<Lesson> visibleLessons(const std::vector<Lesson> &scheduleLessons, Date now,
                                                 bool showsAllLessons);

/// "Completed", "In progress", or the time until the start: "in 2h 5m", "in 12m", "in 45s".
[[nodiscard]] QString statusText(const Lesson &lesson, Date now);

[[nodiscard]] Badge badge(const Lesson &lesson, Date now, bool isNext);

/// "IN PROGRESS", "NEXT" or nothing.
[[nodiscard]] QString badgeText(Badge badge);

[[nodiscard]] Background background(const Lesson &lesson, Date now, bool isNext);

/// Whether the lesson is in progress or the next.
[[nodiscard]] bool isEmphasized(const Lesson &lesson, Date now, bool isNext);

/// A row as text for a screen reader: "10:00, Anna, Zoom, NEXT, in 5m".
[[nodiscard]] QString rowText(const Lesson &lesson, Date now, bool isNext, const QLocale &locale);

} // namespace corvane::scheduleStatus
