// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/CombinedLessonScheduleStore.h"

#include "Corvane/Utilities/DateText.h"

#include <QSet>

#include <algorithm>
#include <iterator>
#include <utility>

namespace corvane {

CombinedLessonScheduleStore::CombinedLessonScheduleStore(LessonScheduleProviding &calendarStore,
                                                         const AppSettings &settings,
                                                         const DateProviding &dateProvider,
                                                         DayCalendar calendar)
    : m_calendarStore(calendarStore)
    , m_settings(settings)
    , m_dateProvider(dateProvider)
    , m_calendar(std::move(calendar))
{
}

QCoro::Task<LessonScheduleResult> CombinedLessonScheduleStore::lessonsForToday()
{
    std::vector<Lesson> manualLessons = manualLessonsOfToday();
    LessonScheduleResult calendarLessons = co_await m_calendarStore.lessonsForToday();
    if (!calendarLessons && manualLessons.empty()) {
        co_return calendarLessons;
    }
    std::vector<Lesson> lessons = calendarLessons ? *std::move(calendarLessons) : std::vector<Lesson>();
    lessons.insert(lessons.end(), std::make_move_iterator(manualLessons.begin()),
                   std::make_move_iterator(manualLessons.end()));
    co_return uniqueAndSorted(std::move(lessons));
}

std::vector<Lesson> CombinedLessonScheduleStore::uniqueAndSorted(std::vector<Lesson> lessons)
{
    QSet<QString> seen;
    seen.reserve(static_cast<qsizetype>(lessons.size()));
    std::erase_if(lessons, [&](const Lesson &lesson) {
        const QString duplicateKey =
            lesson.studentName + u'|' + defaultDoubleText(secondsSince1970(lesson.startTime));
        const auto before = seen.size();
        seen.insert(duplicateKey);
        return seen.size() == before;
    });
    std::ranges::stable_sort(lessons, precedes);
    return lessons;
}

std::vector<Lesson> CombinedLessonScheduleStore::manualLessonsOfToday() const
{
    std::vector<Lesson> lessons;
    for (const ManualLessonEntry &entry : m_settings.manualLessons()) {
        if (m_calendar.isInSameDay(entry.startTime, currentDate())) {
            lessons.push_back(entry.makeLesson());
        }
    }
    return lessons;
}

} // namespace corvane
