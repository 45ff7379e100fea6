// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/StaticLessonScheduleStore.h"

namespace corvane {

QCoro::Task<LessonScheduleResult> StaticLessonScheduleStore::lessonsForToday()
{
    // A copy of its own: co_return would move the member away.
    std::vector<Lesson> lessons = m_lessons;
    co_return lessons;
}

} // namespace corvane
