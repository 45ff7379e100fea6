// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/Lesson.h"

#include <QString>

#include <cstdint>
#include <expected>

namespace corvane {

/// The rule that decided that a calendar event is no lesson.
enum class NoLessonReason : std::uint8_t {
    allDay,         ///< it is left out before the parser
    noLength,       ///< it ends when it starts, or before
    personalWord,   ///< its title holds `word`
    untitled,       ///< this and those below: it names no platform, and so its title has to be a name
    longTitle,      ///< more than 48 characters
    meeting,        ///< `word` is in the title
    unfitCharacter, ///< `word` is a character that no name has
    tooShort,       ///< less than 10 minutes
    tooLong,        ///< more than 90 minutes
    noProfile,      ///< there are no lead times for the platform `word`
};

/// Why an event is no lesson.
struct NotALesson {
    NoLessonReason reason = NoLessonReason::allDay;
    QString word; ///< what decided; empty where it is not one word or character

    friend bool operator==(const NotALesson &, const NotALesson &) = default;
};

/// What becomes of one event.
using LessonVerdict = std::expected<Lesson, NotALesson>;

/// The reason in plain words: "A personal word in the title: dentist".
[[nodiscard]] QString plainText(const NotALesson &verdict);

} // namespace corvane
