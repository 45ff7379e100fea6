// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/LessonWorkflowEngine.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr Seconds oneMinuteMark{60}; ///< before a start: end of prepare
constexpr Seconds lastCallMark{20};  ///< before a start: end of join
constexpr Seconds startGrace{5};     ///< after a start: end of start now

/// The words around the student's name in messages.
constexpr QLatin1StringView teachWord = "Teach "_L1;
constexpr QLatin1StringView finishUpWord = "Finish up "_L1;
constexpr QLatin1StringView someLesson = "current lesson"_L1; ///< in place of the name
constexpr QLatin1StringView joinWord = "Join "_L1;
constexpr QLatin1StringView nowWord = " now"_L1;

bool isPlatformName(const QString &text)
{
    return std::ranges::any_of(allTeachingPlatforms,
                               [&](TeachingPlatform platform) { return rawValue(platform) == text; });
}

/// The lesson in progress and the next one to start.
struct Around {
    const Lesson *current = nullptr;
    const Lesson *upcoming = nullptr;
};

/// Of several lessons in progress or upcoming, the one with the earliest start wins; of equal starts, the
/// first in the list. A stable sort by start would put it first; this finds it without sorting.
Around around(const std::vector<Lesson> &lessons, Date now)
{
    Around result;
    for (const Lesson &lesson : lessons) {
        if (lesson.isInProgress(now) &&
            (result.current == nullptr || lesson.startTime < result.current->startTime)) {
            result.current = &lesson;
        }
        if (lesson.isUpcoming(now) &&
            (result.upcoming == nullptr || lesson.startTime < result.upcoming->startTime)) {
            result.upcoming = &lesson;
        }
    }
    return result;
}

std::optional<Lesson> copied(const Lesson *lesson)
{
    return lesson != nullptr ? std::optional(*lesson) : std::nullopt;
}

/// The phase of the changeover to `upcoming` at `now`, if it has begun.
std::optional<TeachingAction> changeover(const Lesson &upcoming, Date now)
{
    const Date start = upcoming.startTime;
    const auto phase = [&](LessonState state, const QString &message, TeachingActionPriority priority,
                           Date end) {
        return TeachingAction{.state = state,
                              .lesson = upcoming,
                              .nextLesson = upcoming,
                              .message = message,
                              .priority = priority,
                              .effectiveDate = now,
                              .nextTransitionDate = end};
    };
    const Date prepare = start - upcoming.profile.preparationLeadTime;
    const Date oneMinute = start - oneMinuteMark;
    const Date join = start - upcoming.profile.joinEarlyTime;
    const Date lastCall = start - lastCallMark;
    if (now >= prepare && now < oneMinute) {
        return phase(LessonState::prepare, u"4 min before next lesson"_s, TeachingActionPriority::attention,
                     oneMinute);
    }
    if (now >= oneMinute && now < join) {
        return phase(LessonState::oneMinuteWarning, u"1 minute before next lesson"_s,
                     TeachingActionPriority::attention, join);
    }
    if (now >= join && now < lastCall) {
        return phase(LessonState::joinPlatform, LessonWorkflowEngine::joinMessage(upcoming),
                     TeachingActionPriority::urgent, lastCall);
    }
    if (now >= lastCall && now < start) {
        return phase(LessonState::startNow, u"START NOW - 20 seconds remaining"_s,
                     TeachingActionPriority::urgent, start);
    }
    return std::nullopt;
}

} // namespace

TeachingAction LessonWorkflowEngine::action(const std::vector<Lesson> &lessons,
                                            std::optional<Date> date) const
{
    const Date now = date ? *date : currentDate();
    const auto [current, upcoming] = around(lessons, now);

    if (current == nullptr) {
        if (upcoming != nullptr) {
            if (auto phase = changeover(*upcoming, now)) {
                return *std::move(phase);
            }
        }
        return TeachingAction::idle(now, copied(upcoming));
    }

    const auto during = [&](LessonState state, const QString &message, TeachingActionPriority priority,
                            std::optional<Date> transition) {
        return TeachingAction{.state = state,
                              .lesson = *current,
                              .nextLesson = copied(upcoming),
                              .message = message,
                              .priority = priority,
                              .effectiveDate = now,
                              .nextTransitionDate = transition};
    };
    const Date end = current->endTime();
    // Checked before the start grace: a lesson of at most `finishUpLeadTime` is in its wrap-up phase from its
    // first second.
    if (now >= end - current->profile.finishUpLeadTime && now < end) {
        return during(LessonState::wrapUp, wrapUpMessage(current), TeachingActionPriority::attention, end);
    }
    if (now >= current->startTime && now < current->startTime + startGrace) {
        return during(LessonState::startNow, u"START NOW"_s, TeachingActionPriority::urgent,
                      current->startTime + startGrace);
    }
    return during(LessonState::teaching, teachWord + current->studentName, TeachingActionPriority::calm,
                  nextTransitionDate(*current, upcoming, now));
}

QString LessonWorkflowEngine::joinMessage(const Lesson &lesson)
{
    const QString place =
        lesson.platform == TeachingPlatform::onlineLesson ? lesson.studentName : rawValue(lesson.platform);
    return joinWord + place + nowWord;
}

std::optional<QString> LessonWorkflowEngine::studentIn(const QString &message)
{
    QString name;
    if (message.startsWith(teachWord)) {
        name = message.mid(teachWord.size());
    } else if (message.startsWith(finishUpWord)) {
        name = message.mid(finishUpWord.size());
    } else if (message.startsWith(joinWord) && message.endsWith(nowWord) &&
               message.size() > joinWord.size() + nowWord.size()) {
        name = message.mid(joinWord.size()).chopped(nowWord.size());
    }
    if (name == someLesson || isPlatformName(name)) {
        return std::nullopt;
    }
    return name.isEmpty() ? std::nullopt : std::optional(name);
}

QString LessonWorkflowEngine::wrapUpMessage(const Lesson *lesson)
{
    return lesson != nullptr ? finishUpWord + lesson->studentName : finishUpWord + QString(someLesson);
}

std::optional<Date> LessonWorkflowEngine::nextTransitionDate(const Lesson &current, const Lesson *upcoming,
                                                             Date now)
{
    std::optional<Date> earliest;
    const auto consider = [&](Date candidate) {
        if (candidate > now && (!earliest || candidate < *earliest)) {
            earliest = candidate;
        }
    };
    consider(current.endTime() - current.profile.finishUpLeadTime);
    consider(current.endTime());
    if (upcoming != nullptr) {
        consider(upcoming->startTime - upcoming->profile.preparationLeadTime);
        consider(upcoming->startTime - oneMinuteMark);
        consider(upcoming->startTime - upcoming->profile.joinEarlyTime);
        consider(upcoming->startTime);
    }
    return earliest;
}

} // namespace corvane
