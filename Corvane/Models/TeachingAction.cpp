// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Models/TeachingAction.h"

using namespace Qt::StringLiterals;

namespace corvane {

TeachingAction TeachingAction::idle(Date now, const std::optional<Lesson> &nextLesson)
{
    TeachingAction action{.state = LessonState::scheduled,
                          .lesson = std::nullopt,
                          .nextLesson = nextLesson,
                          .message = u"No lessons remaining"_s,
                          .priority = TeachingActionPriority::calm,
                          .effectiveDate = now,
                          .nextTransitionDate = std::nullopt};
    if (nextLesson) {
        action.message = u"Next: "_s + nextLesson->studentName;
        action.nextTransitionDate = nextLesson->startTime - nextLesson->profile.wrapUpLeadTime;
    }
    return action;
}

} // namespace corvane
