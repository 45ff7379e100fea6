// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/LessonScheduleProviding.h"

#include <utility>
#include <vector>

namespace corvane {

/// A fixed list of lessons, for a schedule without calendar access.
class StaticLessonScheduleStore final : public LessonScheduleProviding {
public:
    explicit StaticLessonScheduleStore(std::vector<Lesson> lessons) : m_lessons(std::move(lessons)) {}

    /// The list as given: any day, any order. Never fails.
    QCoro::Task<LessonScheduleResult> lessonsForToday() override;

private:
    std::vector<Lesson> m_lessons;
};

} // namespace corvane
