// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/Lesson.h"

#include <QString>

#include <cstdint>
#include <expected>

namespace corvane {

/// The rule by which a calendar event is not a lesson.
enum class NoLessonReason : std::uint8_t {
    allDay,       ///< skipped before the parser runs
    noLength,     ///< ends at its start or earlier
    personalWord, ///< the title contains `word`
    untitled, ///< the title is empty; from here to tooLong, no platform is named, so the title must be a name
    longTitle,      ///< more than 48 characters
    meeting,        ///< the title contains `word`, "meeting"
    unfitCharacter, ///< `word` is a character that cannot be part of a name
    tooShort,       ///< shorter than 10 minutes
    tooLong,        ///< longer than 90 minutes
    noProfile,      ///< no lead times are defined for the platform `word`
};

/// Why an event is not a lesson.
struct NotALesson {
    NoLessonReason reason = NoLessonReason::allDay;
    QString word; ///< the deciding word or character; empty for other reasons

    friend bool operator==(const NotALesson &, const NotALesson &) = default;
};

/// The verdict on one event.
using LessonVerdict = std::expected<Lesson, NotALesson>;

/// The reason in plain words: "A personal word in the title: dentist".
[[nodiscard]] QString plainText(const NotALesson &verdict);

} // namespace corvane
