// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/StaticLessonScheduleStore.h"

namespace corvane {

QCoro::Task<LessonScheduleResult> StaticLessonScheduleStore::lessonsForToday()
{
    // A copy, because co_return would move from the member.
    std::vector<Lesson> lessons = m_lessons;
    co_return lessons;
}

} // namespace corvane
