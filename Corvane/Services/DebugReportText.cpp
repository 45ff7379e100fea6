// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/DebugReport.h"

#include "Corvane/Services/LessonWorkflowEngine.h"
#include "Corvane/Services/NameInitials.h"
#include "Corvane/Utilities/DateText.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace corvane::debugReport {

namespace {

/// The students mentioned anywhere in `contents`: in the lessons, and in announcements, whose lesson may be
/// gone by now.
QStringList knownNames(const Contents &contents)
{
    QStringList names;
    for (const Lesson &lesson : contents.lessons) {
        names.append(lesson.studentName);
    }
    const auto addStudentIn = [&names](const QString &message) {
        if (const auto student = LessonWorkflowEngine::studentIn(message)) {
            names.append(*student);
        }
    };
    for (const auto &message :
         {contents.snapshot.lastNotificationDescription, contents.snapshot.nextNotificationDescription}) {
        addStudentIn(message.value_or(QString()));
    }
    for (const auto &description :
         {contents.snapshot.currentLessonDescription, contents.snapshot.nextLessonDescription}) {
        // "Anna (Zoom)"
        names.append(description.value_or(QString()).section(u" ("_s, 0, -2));
    }
    for (const QString &line : contents.logLines) {
        const auto between = [&line](QLatin1StringView begin, QLatin1StringView end) {
            const qsizetype from = line.indexOf(begin);
            const qsizetype to = line.lastIndexOf(end);
            return from < 0 || to < from + begin.size()
                       ? QString()
                       : line.mid(from + begin.size(), to - from - begin.size());
        };
        names.append(between("student=\""_L1, "\" platform="_L1));
        addStudentIn(between("message=\""_L1, "\""_L1));
    }
    return names;
}

/// `contents` without private texts; removed while the texts are still complete. Events keep their texts,
/// which decide why they are not lessons.
Contents discreet(Contents contents)
{
    const NameInitials names(knownNames(contents));
    const auto cut = [&names](std::optional<QString> &text) {
        if (text) {
            text = names.applied(*text);
        }
    };
    DebugSnapshot &snapshot = contents.snapshot;
    cut(snapshot.currentLessonDescription);
    cut(snapshot.nextLessonDescription);
    cut(snapshot.lastNotificationDescription);
    cut(snapshot.nextNotificationDescription);
    cut(snapshot.lastCalendarReloadDescription);
    snapshot.logPath = names.applied(snapshot.logPath);
    for (CalendarStatus &calendar : contents.calendars) {
        for (QString *text : {&calendar.name, &calendar.account, &calendar.reason}) {
            *text = names.applied(*text);
        }
    }
    for (QString &line : contents.logLines) {
        line = names.applied(line);
    }
    return contents;
}

void append(QString &text, const Section &section, const QStringList &lines)
{
    text += u'\n' + section.title + u'\n';
    for (const QString &line : lines) {
        text += u"  "_s + line + u'\n';
    }
    if (lines.empty()) {
        text += u"  "_s + section.nothing + u'\n';
    }
}

QStringList rowTexts(const std::vector<Row> &rows)
{
    QStringList texts;
    for (const Row &row : rows) {
        texts.append(rowText(row));
    }
    return texts;
}

} // namespace

QString text(const Contents &contents, const CalendarLessonParser &parser, const QLocale &locale)
{
    const Contents shown = discreet(contents);
    std::vector<Row> notLessons = notLessonRows(shown.events, parser, locale);
    for (Row &row : notLessons) {
        if (!row.title.isEmpty()) {
            row.title = initials(row.title);
        }
    }
    QString report = u"Quillet, "_s + iso8601Text(shown.now) + u'\n';
    append(report, snapshotSection(), rowTexts(snapshotRows(shown.snapshot, locale)));
    append(report, calendarSection(), rowTexts(calendarRows(shown.calendars, shown.now, locale)));
    append(report, notLessonSection(), rowTexts(notLessons));
    append(report, logSection(), shown.logLines);
    return report;
}

} // namespace corvane::debugReport
