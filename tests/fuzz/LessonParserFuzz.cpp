// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/CalendarLessonParser.h"
#include "tests/fuzz/FuzzTarget.h"

#include <algorithm>

using namespace corvane;

namespace {

/// Events of four lines each: title, location, notes, link. The first byte of a title is the signed duration
/// in units of five minutes.
void run(const QByteArray &input)
{
    std::vector<CalendarLessonEvent> events;
    const QList<QByteArray> lines = input.split('\n');
    for (qsizetype first = 0; first + 3 < lines.size() && events.size() < 100; first += 4) {
        const QByteArray &title = lines.at(first);
        const Seconds length{title.isEmpty() ? 0 : static_cast<signed char>(title.front()) * 300.0};
        const Date start = dateSince1970(static_cast<double>(first) * 60);
        events.push_back({.title = QString::fromUtf8(title.mid(1)),
                          .startDate = start,
                          .endDate = start + length,
                          .location = QString::fromUtf8(lines.at(first + 1)),
                          .notes = QString::fromUtf8(lines.at(first + 2)),
                          .url = QUrl(QString::fromUtf8(lines.at(first + 3)))});
    }
    const CalendarLessonParser parser(PlatformProfile::defaults());
    const std::vector<LessonVerdict> verdicts = parser.verdicts(events);
    const std::vector<Lesson> lessons = parser.lessons(events);
    fuzz::require(verdicts.size() == events.size(), "each event has its verdict");
    const auto isLesson = [](const LessonVerdict &verdict) { return verdict.has_value(); };
    fuzz::require(std::ranges::count_if(verdicts, isLesson) == static_cast<std::ptrdiff_t>(lessons.size()),
                  "the lessons are those of the verdicts");
    for (const Lesson &lesson : lessons) {
        fuzz::require(!lesson.studentName.isEmpty(), "a student has a name");
        fuzz::require(lesson.duration > Seconds{0}, "a lesson takes time");
    }
    fuzz::require(std::ranges::is_sorted(lessons, {}, &Lesson::startTime), "lessons are in their order");
}

QUILLET_FUZZ_TARGET("LessonParser", run);

} // namespace
