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

/// Why today's lessons could not be loaded: the user's refusal, or what the platform says.
using LessonScheduleError = std::variant<CalendarAccessError, Failure>;

/// The error in words.
[[nodiscard]] inline QString localizedDescription(const LessonScheduleError &error)
{
    const auto *const access = std::get_if<CalendarAccessError>(&error);
    return access != nullptr ? localizedDescription(*access) : std::get<Failure>(error).localizedDescription;
}

using LessonScheduleResult = std::expected<std::vector<Lesson>, LessonScheduleError>;

/// Whoever knows which lessons there are today. Main thread only; called at each reload, overlapping or not.
class LessonScheduleProviding {
public:
    virtual ~LessonScheduleProviding() = default;

    virtual QCoro::Task<LessonScheduleResult> lessonsForToday() = 0;
};

} // namespace corvane
