// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/LessonScheduleProviding.h"
#include "Corvane/Settings/AppSettings.h"
#include "Corvane/Utilities/DateProviding.h"
#include "Corvane/Utilities/DayCalendar.h"

#include <vector>

namespace corvane {

/// Today's calendar lessons and today's manual lessons in one list, without duplicates, by start time.
///
/// Main thread only. It caches nothing: each call reads both sources afresh. The services handed in are
/// borrowed.
class CombinedLessonScheduleStore final : public LessonScheduleProviding {
public:
    /// `calendar` decides which manual lessons are today's.
    CombinedLessonScheduleStore(LessonScheduleProviding &calendarStore, const AppSettings &settings,
                                const DateProviding &dateProvider, DayCalendar calendar);

    /// Fails, with the calendar's error, only when the calendar fails and there is no manual lesson today.
    QCoro::Task<LessonScheduleResult> lessonsForToday() override;

    /// The first of each group of lessons with the same student name and start, sorted by start, those that
    /// start together by name and platform.
    [[nodiscard]] static std::vector<Lesson> uniqueAndSorted(std::vector<Lesson> lessons);

private:
    [[nodiscard]] std::vector<Lesson> manualLessonsOfToday() const;

    LessonScheduleProviding &m_calendarStore;
    const AppSettings &m_settings;
    /// Not read: each service is built with the shared clock, but which day is today is the system's to say.
    [[maybe_unused]] const DateProviding &m_dateProvider;
    DayCalendar m_calendar;
};

} // namespace corvane
