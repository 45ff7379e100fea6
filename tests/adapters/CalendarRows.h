// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QDate>
#include <QStringList>

#include <vector>

namespace corvane {

/// A calendar text and the occurrences that it means on one day of the user, in any of the tested time zones.
struct CalendarRow {
    const char *name;
    /// Calendar components. %N stands for the row's name, with which every title and identifier begins.
    QByteArray components;
    /// The day to load, in the user's time zone.
    QDate day;
    /// For each occurrence: start, end and the rest of the title. Times are in UTC or, after "local ", in the
    /// user's time zone; "-" or "+" before a time marks an earlier or later day.
    QStringList expected;
};

/// Rows that use the format as intended.
[[nodiscard]] std::vector<CalendarRow> plainRows();
/// Rows with irregular text that other programs write.
[[nodiscard]] std::vector<CalendarRow> foreignRows();
/// Rows that calendar folders can read but the calendar service cannot: when it reads its file, it silently
/// drops what follows an empty part of a rule, so that no client can know it.
[[nodiscard]] std::vector<CalendarRow> folderRows();

/// The definitions of the rows' own time zones.
[[nodiscard]] QByteArray definedZones();

} // namespace corvane
