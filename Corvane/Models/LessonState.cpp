// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Models/LessonState.h"

using namespace Qt::StringLiterals;

namespace corvane {

QString rawValue(LessonState state)
{
    switch (state) {
    case LessonState::scheduled:
        return u"scheduled"_s;
    case LessonState::wrapUp:
        return u"wrapUp"_s;
    case LessonState::prepare:
        return u"prepare"_s;
    case LessonState::oneMinuteWarning:
        return u"oneMinuteWarning"_s;
    case LessonState::joinPlatform:
        return u"joinPlatform"_s;
    case LessonState::startNow:
        return u"startNow"_s;
    case LessonState::teaching:
        return u"teaching"_s;
    case LessonState::feedback:
        return u"feedback"_s;
    case LessonState::completed:
        return u"completed"_s;
    }
    Q_UNREACHABLE();
}

std::optional<LessonState> lessonState(const QString &rawValue)
{
    for (const LessonState state : allLessonStates) {
        if (corvane::rawValue(state) == rawValue) {
            return state;
        }
    }
    return std::nullopt;
}

} // namespace corvane
