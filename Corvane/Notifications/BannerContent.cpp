// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Notifications/BannerContent.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace corvane::bannerContent {

namespace {

constexpr AccentColor blue{0.26, 0.54, 0.94};
constexpr AccentColor green{0.28, 0.72, 0.42};
constexpr AccentColor red{0.94, 0.26, 0.24};

bool isUrgent(const TeachingAction &action)
{
    return action.priority == TeachingActionPriority::urgent;
}

/// Truncates towards zero. A lesson's date may be any double, so larger values are clamped and NaN becomes 0.
std::int64_t saturatedSeconds(double seconds)
{
    constexpr double most = 9007199254740992.0; // 2^53: doubles represent every integer up to here
    return std::isnan(seconds) ? 0 : static_cast<std::int64_t>(std::clamp(seconds, -most, most));
}

// Texts used by more than one line.

QString startNowTitle()
{
    return u"START NOW"_s;
}

QString lessonBeginsNow()
{
    return u"Lesson begins now"_s;
}

QString nextLessonIs(const QString &student)
{
    return u"Next lesson is "_s + student;
}

QString nameOr(const std::optional<Lesson> &lesson, const QString &otherwise)
{
    return lesson ? lesson->studentName : otherwise;
}

QString studentOrNotFound(const std::optional<Lesson> &lesson)
{
    return nameOr(lesson, u"Student not found"_s);
}

} // namespace

QString symbolName(const TeachingAction &action)
{
    switch (action.state) {
    case LessonState::wrapUp:
        return u"checkmark.circle.fill"_s;
    case LessonState::prepare:
    case LessonState::oneMinuteWarning:
    case LessonState::joinPlatform:
        return u"arrow.right.circle.fill"_s;
    case LessonState::startNow:
        return u"exclamationmark.triangle.fill"_s;
    case LessonState::scheduled:
    case LessonState::teaching:
    case LessonState::feedback:
    case LessonState::completed:
        return isUrgent(action) ? u"exclamationmark.triangle.fill"_s : u"bell.fill"_s;
    }
    Q_UNREACHABLE();
}

AccentColor accentColor(const TeachingAction &action)
{
    switch (action.state) {
    case LessonState::wrapUp:
        return green;
    case LessonState::prepare:
    case LessonState::oneMinuteWarning:
    case LessonState::joinPlatform:
        return blue;
    case LessonState::startNow:
        return red;
    case LessonState::scheduled:
    case LessonState::teaching:
    case LessonState::feedback:
    case LessonState::completed:
        return isUrgent(action) ? red : blue;
    }
    Q_UNREACHABLE();
}

std::int64_t secondsUntilLessonStart(const TeachingAction &action, Date currentDate)
{
    const std::optional<Lesson> &lesson = action.lessonOrNext();
    return lesson ? saturatedSeconds(std::ceil((lesson->startTime - currentDate).count())) : 0;
}

QString title(const TeachingAction &action, Date currentDate)
{
    switch (action.state) {
    case LessonState::wrapUp:
        return u"FINISH UP "_s + nameOr(action.lessonOrNext(), u"CURRENT LESSON"_s).toUpper();
    case LessonState::prepare:
        return u"4 MIN BEFORE NEXT LESSON"_s;
    case LessonState::oneMinuteWarning:
        return u"1 MINUTE BEFORE NEXT LESSON"_s;
    case LessonState::joinPlatform:
        return joinTitle(action.lessonOrNext(), secondsUntilLessonStart(action, currentDate));
    case LessonState::startNow:
        return startNowTitle();
    case LessonState::scheduled:
    case LessonState::teaching:
    case LessonState::feedback:
    case LessonState::completed:
        return action.message.toUpper();
    }
    Q_UNREACHABLE();
}

QString joinTitle(const std::optional<Lesson> &lesson, std::int64_t secondsUntilStart)
{
    // The countdown stops at 20: from then on the only thing left to do is to start.
    constexpr std::int64_t lowestCount = 20;
    constexpr std::int64_t countFrom = 30;
    if (secondsUntilStart < 1) {
        return startNowTitle();
    }
    if (secondsUntilStart <= countFrom) {
        return QString::number(std::max(secondsUntilStart, lowestCount)) + u" SECONDS"_s;
    }
    if (!lesson) {
        return u"JOIN NOW"_s;
    }
    if (lesson->platform == TeachingPlatform::onlineLesson) {
        return u"JOIN LESSON NOW"_s;
    }
    return u"JOIN "_s + rawValue(lesson->platform).toUpper() + u" NOW"_s;
}

QString studentLine(const TeachingAction &action)
{
    switch (action.state) {
    case LessonState::prepare:
    case LessonState::oneMinuteWarning:
    case LessonState::joinPlatform:
    case LessonState::startNow:
        return studentOrNotFound(action.lessonOrNext());
    case LessonState::scheduled:
    case LessonState::teaching:
    case LessonState::feedback:
    case LessonState::completed:
        return nameOr(action.lessonOrNext(), u"Quillet"_s);
    case LessonState::wrapUp:
        return action.nextLesson ? nextLessonIs(action.nextLesson->studentName) : u"Next lesson not found"_s;
    }
    Q_UNREACHABLE();
}

QString informationLine(const TeachingAction &action, Date currentDate)
{
    switch (action.state) {
    case LessonState::wrapUp:
        return action.nextLesson
                   ? u"Starts in "_s + formattedDuration(action.nextLesson->startTime - action.effectiveDate)
                   : u"Prepare to transition"_s;
    case LessonState::prepare:
        return nextLessonIs(studentOrNotFound(action.lessonOrNext()));
    case LessonState::oneMinuteWarning:
        return u"Open your lesson and be ready to start"_s;
    case LessonState::joinPlatform:
        return secondsUntilLessonStart(action, currentDate) >= 1 ? u"Get ready to start"_s
                                                                 : lessonBeginsNow();
    case LessonState::startNow:
        return lessonBeginsNow();
    case LessonState::scheduled:
    case LessonState::teaching:
    case LessonState::feedback:
    case LessonState::completed:
        return action.message;
    }
    Q_UNREACHABLE();
}

QString formattedDuration(Seconds duration)
{
    constexpr std::int64_t maximumInSeconds = 89;
    const std::int64_t seconds = std::max<std::int64_t>(saturatedSeconds(duration.count()), 0);
    if (seconds <= maximumInSeconds) {
        return seconds == 1 ? u"1 second"_s : QString::number(seconds) + u" seconds"_s;
    }
    // Rounds halves up, so that the shortest time in minutes is two minutes: "1 minutes" never appears.
    return QString::number((seconds + 30) / 60) + u" minutes"_s;
}

} // namespace corvane::bannerContent
