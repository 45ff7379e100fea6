// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/Readiness.h"

#include "Corvane/Notifications/BackupNotifications.h"
#include "Corvane/Services/CalendarGaps.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace corvane::readiness {

std::optional<Date> dueLook(const std::vector<Lesson> &lessons, Date now)
{
    constexpr Seconds lead{20.0 * 60};
    const auto first = std::ranges::min_element(lessons, {}, &Lesson::startTime);
    const bool isDue = first != lessons.end() && first->startTime - lead <= now && now < first->startTime;
    return isDue ? std::optional(first->startTime) : std::nullopt;
}

std::vector<CalendarStatus> unanswered(const std::vector<CalendarStatus> &calendars, Date now,
                                       const DayCalendar &calendar)
{
    std::vector<CalendarStatus> found;
    std::ranges::copy_if(calendars, std::back_inserter(found), [&](const CalendarStatus &status) {
        return status.condition != CalendarStatus::Condition::leftOut &&
               !(status.lastRead && calendar.isInSameDay(*status.lastRead, now));
    });
    return found;
}

bool hasBackups(const std::vector<Lesson> &lessons, const QStringList &pending,
                const QString &identifierPrefix, Date now)
{
    // A notification that is due sooner may be on its way to the screen.
    constexpr Seconds margin{60};
    return std::ranges::all_of(lessons, [&](const Lesson &lesson) {
        return std::ranges::all_of(
            backupNotifications(lesson, identifierPrefix), [&](const NotificationRequest &request) {
                // Compared without the name, because the center shortens very long identifiers.
                const QString beginning = request.identifier.chopped(lesson.studentName.size());
                return request.fireDate <= now + margin ||
                       std::ranges::any_of(pending, [&beginning](const QString &identifier) {
                           return identifier.startsWith(beginning);
                       });
            });
    });
}

QString problems(const Readiness &found)
{
    QStringList words;
    if (!found.unansweredCalendars.empty()) {
        words.append(u"calendars="_s + QString::number(found.unansweredCalendars.size()));
    }
    if (!found.hasScreen) {
        words.append(u"screen"_s);
    }
    if (!found.hasSound) {
        words.append(u"sound"_s);
    }
    if (!found.showsNotifications) {
        words.append(u"notifications"_s);
    }
    if (!found.hasBackups) {
        words.append(u"backups"_s);
    }
    return words.join(u' ');
}

QString title()
{
    return u"Please check before your first lesson"_s;
}

QString body(const Readiness &found, Date now, const QLocale &locale)
{
    // Short sentences first, because a long text is cut at its end.
    QStringList sentences;
    if (!found.hasScreen) {
        sentences.append(u"No screen can show a banner: switch your monitor on."_s);
    }
    if (!found.hasSound) {
        sentences.append(u"There is no sound: check your sound settings."_s);
    }
    if (!found.showsNotifications) {
        sentences.append(u"Notifications are off: switch them on in your desktop's settings."_s);
    }
    if (!found.hasBackups) {
        sentences.append(u"Notifications are not prepared: quit Quillet and start it again."_s);
    }
    if (!found.unansweredCalendars.empty()) {
        sentences.append(calendarGaps::body(found.unansweredCalendars, now, locale));
    }
    return sentences.join(u' ');
}

} // namespace corvane::readiness
