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

/// The texts of the debug window: pure functions of the program's state and the moment.
///
/// The texts in the rows are on one line and cut to a displayable length; apart from that they may contain
/// anything and must be shown as plain text.
namespace corvane::debugReport {

/// The state of what a row describes.
enum class Tone : std::uint8_t {
    plain,   ///< no judgement
    good,    ///< in order
    waiting, ///< not known yet
    warning, ///< something is wrong, but there is a substitute
    bad,     ///< something is missing
};

struct Row {
    Tone tone = Tone::plain;
    QString lead;    ///< a label or a time; each text may be empty
    QString title;   ///< the main text
    QString detail;  ///< the secondary text
    QString problem; ///< what is wrong, shown in the colour of the tone

    friend bool operator==(const Row &, const Row &) = default;
};

/// At most this many rows of one kind are shown; a last row gives the number of the others.
inline constexpr std::size_t mostRows = 500;

/// One row for each value of the snapshot.
[[nodiscard]] std::vector<Row> snapshotRows(const DebugSnapshot &snapshot, const QLocale &locale);

/// One row for each calendar: its state, its events and its problem.
[[nodiscard]] std::vector<Row> calendarRows(const std::vector<CalendarStatus> &calendars, Date now,
                                            const QLocale &locale);

/// The events that are not lessons, each with the reason that `parser` gives.
[[nodiscard]] std::vector<Row> notLessonRows(const std::vector<CalendarEvent> &events,
                                             const CalendarLessonParser &parser, const QLocale &locale);

/// The lines of the log, with local times.
[[nodiscard]] std::vector<Row> logRows(const QStringList &lines);

/// A row as text for a screen reader.
[[nodiscard]] QString rowText(const Row &row);

/// A section of the window: its title, and its text while it has no rows.
struct Section {
    QString title;
    QString nothing;
};

[[nodiscard]] Section snapshotSection();
[[nodiscard]] Section calendarSection();
[[nodiscard]] Section notLessonSection();
[[nodiscard]] Section logSection();

/// The contents of a report.
struct Contents {
    DebugSnapshot snapshot;
    std::vector<Lesson> lessons; ///< their names are reduced to initials
    std::vector<CalendarStatus> calendars;
    std::vector<CalendarEvent> events;
    QStringList logLines;
    Date now;
};

/// The window's contents as plain text, to be sent to someone else: students' names and the titles of events
/// are reduced to initials; links and notes are left out. Log lines keep their UTC times, as in the file.
[[nodiscard]] QString text(const Contents &contents, const CalendarLessonParser &parser,
                           const QLocale &locale);

} // namespace corvane::debugReport
