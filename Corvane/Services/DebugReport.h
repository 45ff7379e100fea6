// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/CalendarLessonParser.h"
#include "Corvane/Calendar/CalendarMonitor.h"
#include "Corvane/Models/DebugSnapshot.h"

#include <QLocale>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <vector>

/// What the debug window shows, and how it puts it: pure functions of what the program knows and the moment.
///
/// The texts in the rows are on one line and cut to what can be shown; they may hold anything else, and are
/// to be shown as plain text.
namespace corvane::debugReport {

/// How something stands.
enum class Tone : std::uint8_t {
    plain,   ///< nothing to tell
    good,    ///< all is well
    waiting, ///< not known yet
    warning, ///< something is wrong, and stood in for
    bad,     ///< something is missing
};

struct Row {
    Tone tone = Tone::plain;
    QString lead;    ///< what it is, or its time; each text may be empty
    QString title;   ///< what counts
    QString detail;  ///< what stands back
    QString problem; ///< what is wrong, in the colour of the tone

    friend bool operator==(const Row &, const Row &) = default;
};

/// So many rows of one kind are shown; a last one tells how many more there are.
inline constexpr std::size_t mostRows = 500;

/// The snapshot, a row for each of its values.
[[nodiscard]] std::vector<Row> snapshotRows(const DebugSnapshot &snapshot, const QLocale &locale);

/// Each calendar: how it stands, what it gave and what is wrong with it.
[[nodiscard]] std::vector<Row> calendarRows(const std::vector<CalendarStatus> &calendars, Date now,
                                            const QLocale &locale);

/// The events that did not become lessons, each with the rule of `parser` that decided.
[[nodiscard]] std::vector<Row> notLessonRows(const std::vector<CalendarEvent> &events,
                                             const CalendarLessonParser &parser, const QLocale &locale);

/// The lines of the log, with the user's time of day.
[[nodiscard]] std::vector<Row> logRows(const QStringList &lines);

/// A row in words, for a screen reader.
[[nodiscard]] QString rowText(const Row &row);

/// A part of the window: its title, and what it says while it has no rows.
struct Section {
    QString title;
    QString nothing;
};

[[nodiscard]] Section snapshotSection();
[[nodiscard]] Section calendarSection();
[[nodiscard]] Section notLessonSection();
[[nodiscard]] Section logSection();

/// All that a report is made of.
struct Contents {
    DebugSnapshot snapshot;
    std::vector<Lesson> lessons; ///< whose names are cut
    std::vector<CalendarStatus> calendars;
    std::vector<CalendarEvent> events;
    QStringList logLines;
    Date now;
};

/// What the window shows as plain text, to be sent to someone else: pupils' names are cut to their initials,
/// and so are the titles of events; links and notes are left out. Times in the log are in UTC there, as in
/// the file.
[[nodiscard]] QString text(const Contents &contents, const CalendarLessonParser &parser,
                           const QLocale &locale);

} // namespace corvane::debugReport
