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
/// Keeps no state between calls; every step is linear in the length of the texts, which are untrusted. The
/// calendar store calls it at each load.
class CalendarLessonParser {
public:
    explicit CalendarLessonParser(std::map<TeachingPlatform, PlatformProfile> platformProfiles);

    /// The lessons among `events`, sorted by start time; equal start times keep the order of `events`. Each
    /// lesson gets a new identifier.
    [[nodiscard]] std::vector<Lesson> lessons(const std::vector<CalendarLessonEvent> &events) const;

    /// The verdict on each of `events`, in their order: the lesson, or the rule that ruled it out. lessons()
    /// applies the same rules.
    [[nodiscard]] std::vector<LessonVerdict> verdicts(const std::vector<CalendarLessonEvent> &events) const;

    /// The platform that a keyword in the event's texts or link names, if any.
    [[nodiscard]] static std::optional<TeachingPlatform> platform(const CalendarLessonEvent &event);

    /// The student's name in `title`; "Student" if nothing remains.
    [[nodiscard]] static QString studentName(const QString &title, TeachingPlatform platform);

    /// Whether `text` contains a word that marks the event as personal.
    [[nodiscard]] static bool hasPersonalBlocker(const QString &text);

    /// Whether every character of `trimmedTitle` is allowed in a name.
    [[nodiscard]] static bool looksLikeNameOnlyLesson(const QString &trimmedTitle);

    [[nodiscard]] static bool isAllowedNameCharacter(char32_t scalar);
    [[nodiscard]] static bool isCJKUnifiedIdeograph(char32_t scalar);

private:
    std::map<TeachingPlatform, PlatformProfile> m_platformProfiles;
};

} // namespace corvane
