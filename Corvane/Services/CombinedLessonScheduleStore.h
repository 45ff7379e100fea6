// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/LessonScheduleProviding.h"
#include "Corvane/Settings/AppSettings.h"
#include "Corvane/Utilities/DateProviding.h"
#include "Corvane/Utilities/DayCalendar.h"

#include <vector>

namespace corvane {

/// Today's calendar and manual lessons in one list, sorted by start time, without duplicates.
///
/// Main thread only. Caches nothing: each call reads both sources again. Borrows the services passed in.
class CombinedLessonScheduleStore final : public LessonScheduleProviding {
public:
    /// `calendar` decides which manual lessons are today's.
    CombinedLessonScheduleStore(LessonScheduleProviding &calendarStore, const AppSettings &settings,
                                const DateProviding &dateProvider, DayCalendar calendar);

    /// Fails, with the calendar's error, only if the calendar fails and there is no manual lesson today.
    QCoro::Task<LessonScheduleResult> lessonsForToday() override;

    /// The first of each group of lessons with the same student name and start, sorted by start, then name,
    /// then platform.
    [[nodiscard]] static std::vector<Lesson> uniqueAndSorted(std::vector<Lesson> lessons);

private:
    [[nodiscard]] std::vector<Lesson> manualLessonsOfToday() const;

    LessonScheduleProviding &m_calendarStore;
    const AppSettings &m_settings;
    /// Unused: every service gets the shared clock, but the system clock decides which day is today.
    [[maybe_unused]] const DateProviding &m_dateProvider;
    DayCalendar m_calendar;
};

} // namespace corvane
