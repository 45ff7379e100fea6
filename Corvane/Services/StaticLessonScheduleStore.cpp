// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/StaticLessonScheduleStore.h"

namespace corvane {

QCoro::Task<LessonScheduleResult> StaticLessonScheduleStore::lessonsForToday()
{
    co_return m_lessons;
}

} // namespace corvane
