// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/DebugReport.h"

#include "Corvane/Utilities/DateText.h"
#include "Corvane/Utilities/OneLine.h"

#include <algorithm>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane::debugReport {

namespace {

/// Titles and names are cut to this many characters.
constexpr qsizetype longestTitle = 200;

QString shortened(const QString &text)
{
    const QString line = oneLine(text, longestTitle);
    return line.size() < longestTitle ? line : line + u'…';
}

QDateTime localTime(Date date)
{
    return toDateTime(date).toLocalTime();
}

/// "09:14", preceded by the date if it is not the day of `now`.
QString whenText(Date date, Date now, const QLocale &locale)
{
    const QString time = timeOfDayText(date, locale);
    const QDateTime local = localTime(date);
    return local.date() == localTime(now).date()
               ? time
               : locale.toString(local.date(), u"ddd d MMM"_s) + u' ' + time;
}

Row valueRow(const QString &name, const std::optional<QString> &value)
{
    return {.tone = Tone::plain,
            .lead = name,
            .title = value ? oneLine(*value) : u"None"_s,
            .detail = {},
            .problem = {}};
}

QString countdownText(const DebugSnapshot &snapshot)
{
    if (!snapshot.secondsUntilNextEvent) {
        return snapshot.countdownDescription;
    }
    const Date moment = snapshot.currentTime + Seconds{*snapshot.secondsUntilNextEvent};
    return u"in "_s + snapshot.countdownDescription + u", at "_s +
           localTime(moment).time().toString(u"HH:mm:ss"_s);
}

QString countText(int count)
{
    return count == 0 ? u"no events today"_s
                      : QString::number(count) + (count == 1 ? u" event today"_s : u" events today"_s);
}

/// What is wrong with a calendar, as the beginning of a sentence.
QString conditionText(CalendarStatus::Condition condition)
{
    switch (condition) {
    case CalendarStatus::Condition::unread:
    case CalendarStatus::Condition::answers:
        return {};
    case CalendarStatus::Condition::awaitsPassword:
        return u"Waiting for its password"_s;
    case CalendarStatus::Condition::silent:
        return u"No answer"_s;
    case CalendarStatus::Condition::unopened:
        return u"Could not be opened"_s;
    case CalendarStatus::Condition::unreadable:
        return u"Could not be read"_s;
    case CalendarStatus::Condition::leftOut:
        return u"Left out"_s;
    }
    Q_UNREACHABLE();
}

QString problemText(const CalendarStatus &calendar, Date now, const QLocale &locale)
{
    QString problem = conditionText(calendar.condition);
    if (problem.isEmpty()) {
        return problem;
    }
    if (calendar.failingSince) {
        problem += u" since "_s + whenText(*calendar.failingSince, now, locale);
    }
    if (calendar.usesLastAnswer) {
        problem += u", shows its last answer"_s;
    }
    if (!calendar.reason.isEmpty()) {
        problem += u": "_s + shortened(calendar.reason);
    }
    if (calendar.isGap()) {
        problem += (problem.endsWith(u'.') || problem.endsWith(u'…') ? u" "_s : u". "_s) +
                   u"Its lessons are missing."_s;
    }
    return problem;
}

Tone toneOf(const CalendarStatus &calendar)
{
    switch (calendar.condition) {
    case CalendarStatus::Condition::unread:
        return Tone::waiting;
    case CalendarStatus::Condition::answers:
        return Tone::good;
    case CalendarStatus::Condition::awaitsPassword:
    case CalendarStatus::Condition::silent:
    case CalendarStatus::Condition::unopened:
    case CalendarStatus::Condition::unreadable:
    case CalendarStatus::Condition::leftOut:
        return calendar.isGap() ? Tone::bad : Tone::warning;
    }
    Q_UNREACHABLE();
}

Row calendarRow(const CalendarStatus &calendar, Date now, const QLocale &locale)
{
    QStringList details;
    if (calendar.lastRead) {
        details << countText(calendar.eventCount)
                << u"last read "_s + whenText(*calendar.lastRead, now, locale);
    } else {
        details << u"not read yet"_s;
    }
    // Last, because a right-to-left name would reorder what follows.
    details << shortened(calendar.account);
    details.removeAll(QString());
    return {.tone = toneOf(calendar),
            .lead = {},
            .title = shortened(calendar.name),
            .detail = details.join(u" · "_s),
            .problem = problemText(calendar, now, locale)};
}

QString timesText(const CalendarEvent &event, const QLocale &locale)
{
    return event.isAllDay
               ? u"All day"_s
               : timeOfDayText(event.startDate, locale) + u" – "_s + timeOfDayText(event.endDate, locale);
}

Row moreRow(std::size_t count)
{
    return {
        .tone = Tone::plain, .lead = {}, .title = {}, .detail = u"and %1 more"_s.arg(count), .problem = {}};
}

/// The events that are not lessons, and why.
std::vector<std::pair<const CalendarEvent *, NotALesson>> notLessons(const std::vector<CalendarEvent> &events,
                                                                     const CalendarLessonParser &parser)
{
    std::vector<CalendarLessonEvent> timed;
    for (const CalendarEvent &event : events) {
        if (auto lessonEvent = CalendarLessonEvent::fromTimedEvent(event)) {
            timed.push_back(*std::move(lessonEvent));
        }
    }
    const std::vector<LessonVerdict> verdicts = parser.verdicts(timed);
    std::vector<std::pair<const CalendarEvent *, NotALesson>> found;
    auto verdict = verdicts.begin();
    for (const CalendarEvent &event : events) {
        if (event.isAllDay) {
            found.emplace_back(&event, NotALesson{.reason = NoLessonReason::allDay, .word = {}});
        } else if (const LessonVerdict &judged = *verdict++; !judged) {
            found.emplace_back(&event, judged.error());
        }
    }
    return found;
}

} // namespace

std::vector<Row> snapshotRows(const DebugSnapshot &snapshot, const QLocale &locale)
{
    return {
        valueRow(u"Time"_s, locale.toString(localTime(snapshot.currentTime), u"ddd d MMM yyyy HH:mm:ss"_s)),
        valueRow(u"State"_s, rawValue(snapshot.engineState)),
        valueRow(u"Current lesson"_s, snapshot.currentLessonDescription),
        valueRow(u"Next lesson"_s, snapshot.nextLessonDescription),
        valueRow(u"Next change"_s, countdownText(snapshot)),
        valueRow(u"Last notification"_s, snapshot.lastNotificationDescription),
        valueRow(u"Next notification"_s, snapshot.nextNotificationDescription),
        valueRow(u"Lessons loaded"_s, QString::number(snapshot.loadedLessonCount)),
        valueRow(u"Last reload"_s, snapshot.lastCalendarReloadDescription),
        valueRow(u"Log file"_s, snapshot.logPath)};
}

std::vector<Row> calendarRows(const std::vector<CalendarStatus> &calendars, Date now, const QLocale &locale)
{
    std::vector<Row> rows;
    for (std::size_t index = 0; index < std::min(calendars.size(), mostRows); ++index) {
        rows.push_back(calendarRow(calendars[index], now, locale));
    }
    if (calendars.size() > mostRows) {
        rows.push_back(moreRow(calendars.size() - mostRows));
    }
    return rows;
}

std::vector<Row> notLessonRows(const std::vector<CalendarEvent> &events, const CalendarLessonParser &parser,
                               const QLocale &locale)
{
    const auto found = notLessons(events, parser);
    std::vector<Row> rows;
    for (std::size_t index = 0; index < std::min(found.size(), mostRows); ++index) {
        const auto &[event, reason] = found[index];
        rows.push_back({.tone = Tone::plain,
                        .lead = timesText(*event, locale),
                        .title = shortened(event->title.value_or(QString())),
                        .detail = plainText(reason),
                        .problem = {}});
    }
    if (found.size() > mostRows) {
        rows.push_back(moreRow(found.size() - mostRows));
    }
    return rows;
}

std::vector<Row> logRows(const QStringList &lines)
{
    std::vector<Row> rows;
    for (const QString &line : lines) {
        const qsizetype space = line.left(32).indexOf(u' ');
        const QDateTime stamp = QDateTime::fromString(line.left(space), Qt::ISODateWithMs);
        const bool isStamped = space > 0 && stamp.isValid();
        rows.push_back({.tone = Tone::plain,
                        .lead = isStamped ? stamp.toLocalTime().time().toString(u"HH:mm:ss"_s) : QString(),
                        .title = oneLine(isStamped ? line.mid(space + 1, longestLine) : line),
                        .detail = {},
                        .problem = {}});
    }
    return rows;
}

QString rowText(const Row &row)
{
    QStringList parts{row.lead, row.title, row.detail, row.problem};
    parts.removeAll(QString());
    return parts.join(u", "_s);
}

Section snapshotSection()
{
    return {.title = u"Now"_s, .nothing = {}};
}

Section calendarSection()
{
    return {.title = u"Calendars"_s, .nothing = u"No calendars were found."_s};
}

Section notLessonSection()
{
    return {.title = u"Not lessons today"_s, .nothing = u"No event of today was left out."_s};
}

Section logSection()
{
    return {.title = u"Log"_s, .nothing = u"Nothing has been logged yet."_s};
}

} // namespace corvane::debugReport
