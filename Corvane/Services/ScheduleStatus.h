// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/TeachingAction.h"

#include <QLocale>
#include <QString>

#include <optional>
#include <vector>

/// What today's schedule shows, and how it puts it: pure functions of the lessons, the current
/// action and the moment, for the schedule's views.
///
/// The names in the texts come from strangers: they may hold anything, and are to be shown as plain text.
namespace corvane::scheduleStatus {

/// What the schedule is called, in the menu bar panel and in the menu that opens it.
[[nodiscard]] QString title();

/// Where a lesson stands at a moment. Its end belongs to `completed`, its start to `inProgress`.
enum class Progress { completed, inProgress, upcoming };

/// The few words above a row's status.
enum class Badge { none, inProgress, next };

/// What a row stands on.
enum class Background {
    next,       ///< red
    inProgress, ///< green
    completed,  ///< the secondary colour
    other,      ///< the primary colour
};

/// How much of its colour a background shows, 0 to 1.
[[nodiscard]] double opacity(Background background);

[[nodiscard]] Progress progress(const Lesson &lesson, Date now);

/// The day's list: `lessons` by their start, those that start together in the order given. While there are
/// none, the lessons that `currentAction` speaks of.
[[nodiscard]] std::vector<Lesson> scheduleLessons(const std::vector<Lesson> &lessons,
                                                  const TeachingAction &currentAction);

/// The first lesson of the day's list that starts after `now`.
[[nodiscard]] std::optional<Lesson> nextLesson(const std::vector<Lesson> &scheduleLessons, Date now);

/// What is shown of the day's list: all of it, or at most three lessons about the present moment, the one
/// before it among them.
[[nodiscard]] std::vector<Lesson> visibleLessons(const std::vector<Lesson> &scheduleLessons, Date now,
                                                 bool showsAllLessons);

/// "Completed", "In progress", or the time until the start: "in 2h 5m", "in 12m", "in 45s".
[[nodiscard]] QString statusText(const Lesson &lesson, Date now);

[[nodiscard]] Badge badge(const Lesson &lesson, Date now, bool isNext);

/// "IN PROGRESS", "NEXT" or nothing.
[[nodiscard]] QString badgeText(Badge badge);

[[nodiscard]] Background background(const Lesson &lesson, Date now, bool isNext);

/// Whether a row is one of those that count now: the lesson is in progress or the next.
[[nodiscard]] bool isEmphasized(const Lesson &lesson, Date now, bool isNext);

/// A row in words, for a screen reader: "10:00, Anna, Zoom, NEXT, in 5m".
[[nodiscard]] QString rowText(const Lesson &lesson, Date now, bool isNext, const QLocale &locale);

} // namespace corvane::scheduleStatus
