// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/BellNotice.h"

#include "Corvane/Services/ScheduleStatus.h"
#include "Corvane/Utilities/DateText.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// The bell's title is the student's name while idle or teaching, and the state otherwise; the notice begins
/// with the other of the two.
QString beginning(const TeachingAction &action, const Lesson &lesson)
{
    switch (action.state) {
    case LessonState::scheduled:
        return u"Next lesson"_s;
    case LessonState::teaching:
        return scheduleStatus::inProgressText();
    case LessonState::wrapUp:
    case LessonState::prepare:
    case LessonState::oneMinuteWarning:
    case LessonState::joinPlatform:
    case LessonState::startNow:
    case LessonState::feedback:
    case LessonState::completed:
        return lesson.studentName;
    }
    Q_UNREACHABLE();
}

} // namespace

QString bellNotice(const TeachingAction &action, const QString &gaps, const QLocale &locale)
{
    QStringList sentences;
    if (const auto &lesson = action.lessonOrNext()) {
        const QString time = action.effectiveDate < lesson->startTime
                                 ? timeOfDayText(lesson->startTime, locale)
                                 : u"until "_s + timeOfDayText(lesson->endTime(), locale);
        sentences << QStringList{beginning(action, *lesson), rawValue(lesson->platform), time}.join(u", "_s);
    }
    if (!gaps.isEmpty()) {
        sentences << gaps;
    }
    return sentences.join(u". "_s);
}

} // namespace corvane
