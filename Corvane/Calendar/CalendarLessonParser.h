// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/CalendarLessonEvent.h"
#include "Corvane/Calendar/LessonVerdict.h"
#include "Corvane/Models/Lesson.h"

#include <map>
#include <optional>
#include <vector>

namespace corvane {

/// Turns calendar events into lessons: which events are lessons, on which platform, with whom, how long.
///
/// A value without state between calls; every step is linear in the length of the texts, which come from
/// strangers. Called by the calendar store at each load.
class CalendarLessonParser {
public:
    explicit CalendarLessonParser(std::map<TeachingPlatform, PlatformProfile> platformProfiles);

    /// The lessons among `events`, by start time; those that start together keep the order of `events`.
    /// Events that are not lessons are left out. The lessons get new identifiers.
    [[nodiscard]] std::vector<Lesson> lessons(const std::vector<CalendarLessonEvent> &events) const;

    /// What becomes of each of `events`, in their order: the lesson, or the rule that decided against one.
    /// lessons() follows it.
    [[nodiscard]] std::vector<LessonVerdict> verdicts(const std::vector<CalendarLessonEvent> &events) const;

    /// The platform that a keyword in the event's texts or link names, or none.
    [[nodiscard]] static std::optional<TeachingPlatform> platform(const CalendarLessonEvent &event);

    /// What remains of `title` as the student's name; "Student" when nothing does.
    [[nodiscard]] static QString studentName(const QString &title, TeachingPlatform platform);

    /// Whether `text` holds a word that makes the event a personal one.
    [[nodiscard]] static bool hasPersonalBlocker(const QString &text);

    /// Whether every character of `trimmedTitle` may stand in a name.
    [[nodiscard]] static bool looksLikeNameOnlyLesson(const QString &trimmedTitle);

    [[nodiscard]] static bool isAllowedNameCharacter(char32_t scalar);
    [[nodiscard]] static bool isCJKUnifiedIdeograph(char32_t scalar);

private:
    std::map<TeachingPlatform, PlatformProfile> m_platformProfiles;
};

} // namespace corvane
