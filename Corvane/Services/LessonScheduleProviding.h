// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/CalendarAccessError.h"
#include "Corvane/Models/Lesson.h"
#include "Corvane/Utilities/Failure.h"

#include <qcoro/qcorotask.h>

#include <expected>
#include <variant>
#include <vector>

namespace corvane {

/// Why today's lessons could not be loaded: access was denied, or the platform reported a failure.
using LessonScheduleError = std::variant<CalendarAccessError, Failure>;

[[nodiscard]] inline QString localizedDescription(const LessonScheduleError &error)
{
    const auto *const access = std::get_if<CalendarAccessError>(&error);
    return access != nullptr ? localizedDescription(*access) : std::get<Failure>(error).localizedDescription;
}

using LessonScheduleResult = std::expected<std::vector<Lesson>, LessonScheduleError>;

/// Provides today's lessons. Main thread only; called at each reload, and calls may overlap.
class LessonScheduleProviding {
public:
    virtual ~LessonScheduleProviding() = default;

    virtual QCoro::Task<LessonScheduleResult> lessonsForToday() = 0;
};

} // namespace corvane
