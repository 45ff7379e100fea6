// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/Lesson.h"
#include "Corvane/Models/LessonState.h"

#include <optional>

namespace corvane {

/// How urgent an action is.
enum class TeachingActionPriority {
    calm,      ///< idle and teaching
    attention, ///< wrap up, prepare, one-minute warning
    urgent,    ///< join, start now
};

/// What the teacher should do at one moment: the workflow engine's result.
///
/// Actions computed at different instants are never equal, because `effectiveDate` takes part. To tell
/// whether the teacher is asked for the same thing, compare the state and the lesson's identity.
struct TeachingAction {
    LessonState state = LessonState::scheduled;
    std::optional<Lesson> lesson;     ///< the lesson that the action is about; none when idle
    std::optional<Lesson> nextLesson; ///< the first lesson that starts after `effectiveDate`
    QString message;                  ///< the one-line instruction
    TeachingActionPriority priority = TeachingActionPriority::calm;
    Date effectiveDate;                     ///< the moment the action was computed for
    std::optional<Date> nextTransitionDate; ///< when the result is expected to change; may be in the past

    friend bool operator==(const TeachingAction &, const TeachingAction &) = default;

    /// The lesson that the action's texts mention: `lesson`, or `nextLesson` if there is none.
    [[nodiscard]] const std::optional<Lesson> &lessonOrNext() const { return lesson ? lesson : nextLesson; }

    /// The action when there is nothing to do; it names the next lesson, if any.
    [[nodiscard]] static TeachingAction idle(Date now, const std::optional<Lesson> &nextLesson);
};

} // namespace corvane
