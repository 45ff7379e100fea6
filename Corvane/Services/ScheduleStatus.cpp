// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/ScheduleStatus.h"

#include "Corvane/Utilities/DateText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace corvane::scheduleStatus {

QString title()
{
    return u"Today’s schedule"_s;
}

double opacity(Background background)
{
    switch (background) {
    case Background::next:
        return 0.08;
    case Background::inProgress:
        return 0.12;
    case Background::completed:
        return 0.06;
    case Background::other:
        return 0.035;
    }
    Q_UNREACHABLE();
}

Progress progress(const Lesson &lesson, Date now)
{
    if (lesson.endTime() <= now) {
        return Progress::completed;
    }
    return lesson.isUpcoming(now) ? Progress::upcoming : Progress::inProgress;
}

std::vector<Lesson> scheduleLessons(const std::vector<Lesson> &lessons, const TeachingAction &currentAction)
{
    std::vector<Lesson> list = lessons;
    std::ranges::stable_sort(list, {}, &Lesson::startTime);
    if (!list.empty()) {
        return list;
    }
    const std::optional<Lesson> &lesson = currentAction.lesson;
    const std::optional<Lesson> &following = currentAction.nextLesson;
    if (lesson) {
        list.push_back(*lesson);
    }
    if (following && !(lesson && lesson->id == following->id)) {
        list.push_back(*following);
    }
    return list;
}

std::optional<Lesson> nextLesson(const std::vector<Lesson> &scheduleLessons, Date now)
{
    const auto next =
        std::ranges::find_if(scheduleLessons, [now](const Lesson &lesson) { return lesson.isUpcoming(now); });
    return next != scheduleLessons.end() ? std::optional(*next) : std::nullopt;
}

std::vector<Lesson> visibleLessons(const std::vector<Lesson> &scheduleLessons, Date now, bool showsAllLessons)
{
    if (showsAllLessons) {
        return scheduleLessons;
    }
    std::vector<Lesson> completed;
    std::vector<Lesson> inProgress;
    std::vector<Lesson> upcoming;
    for (const Lesson &lesson : scheduleLessons) {
        switch (progress(lesson, now)) {
        case Progress::completed:
            completed.push_back(lesson);
            break;
        case Progress::inProgress:
            inProgress.push_back(lesson);
            break;
        case Progress::upcoming:
            upcoming.push_back(lesson);
            break;
        }
    }
    std::vector<Lesson> visible;
    const auto takeLast = [&visible](const std::vector<Lesson> &list, std::size_t count) {
        const std::size_t taken = std::min(count, list.size());
        visible.insert(visible.end(), list.end() - static_cast<std::ptrdiff_t>(taken), list.end());
    };
    const auto takeFirst = [&visible](const std::vector<Lesson> &list, std::size_t count) {
        const std::size_t taken = std::min(count, list.size());
        visible.insert(visible.end(), list.begin(), list.begin() + static_cast<std::ptrdiff_t>(taken));
    };
    if (!inProgress.empty()) {
        takeLast(completed, 1);
        takeFirst(inProgress, 1);
        takeFirst(upcoming, 1);
    } else if (!upcoming.empty()) {
        takeLast(completed, 1);
        takeFirst(upcoming, 2);
    } else {
        takeLast(completed, 2);
    }
    return visible;
}

QString inProgressText()
{
    return u"In progress"_s;
}

QString completedText()
{
    return u"Completed"_s;
}

QString statusText(const Lesson &lesson, Date now)
{
    switch (progress(lesson, now)) {
    case Progress::completed:
        return completedText();
    case Progress::inProgress:
        return inProgressText();
    case Progress::upcoming:
        break;
    }
    const auto seconds = static_cast<qint64>(std::max((lesson.startTime - now).count(), 0.0));
    if (seconds >= 3600) {
        return u"in "_s + QString::number(seconds / 3600) + u"h "_s + QString::number(seconds / 60 % 60) +
               u'm';
    }
    return seconds >= 60 ? u"in "_s + QString::number(seconds / 60) + u'm'
                         : u"in "_s + QString::number(seconds) + u's';
}

Badge badge(const Lesson &lesson, Date now, bool isNext)
{
    if (progress(lesson, now) == Progress::inProgress) {
        return Badge::inProgress;
    }
    return isNext ? Badge::next : Badge::none;
}

QString badgeText(Badge badge)
{
    switch (badge) {
    case Badge::none:
        return {};
    case Badge::inProgress:
        return u"IN PROGRESS"_s;
    case Badge::next:
        return u"NEXT"_s;
    }
    Q_UNREACHABLE();
}

Background background(const Lesson &lesson, Date now, bool isNext)
{
    if (isNext) {
        return Background::next;
    }
    switch (progress(lesson, now)) {
    case Progress::completed:
        return Background::completed;
    case Progress::inProgress:
        return Background::inProgress;
    case Progress::upcoming:
        return Background::other;
    }
    Q_UNREACHABLE();
}

bool isEmphasized(const Lesson &lesson, Date now, bool isNext)
{
    return isNext || progress(lesson, now) == Progress::inProgress;
}

QString rowText(const Lesson &lesson, Date now, bool isNext, const QLocale &locale)
{
    QStringList parts{timeOfDayText(lesson.startTime, locale), lesson.studentName, rawValue(lesson.platform)};
    // The status text already says "In progress".
    if (badge(lesson, now, isNext) == Badge::next) {
        parts.append(badgeText(Badge::next));
    }
    parts.append(statusText(lesson, now));
    return parts.join(u", "_s);
}

} // namespace corvane::scheduleStatus
