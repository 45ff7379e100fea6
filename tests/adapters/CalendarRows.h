// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QDate>
#include <QStringList>

#include <vector>

namespace corvane {

/// What one calendar text means: the occurrences of a day of the user, in the user's time zones.
struct CalendarRow {
    const char *name;
    /// Components; %N stands for the row's name, which begins every title and identifier.
    QByteArray components;
    /// A day of the user.
    QDate day;
    /// Start, end and the title's rest: in UTC, or, with "local " before, on the user's clock.
    QStringList expected;
};

/// What the format's own means are for.
[[nodiscard]] std::vector<CalendarRow> plainRows();
/// What other programs write all the same.
[[nodiscard]] std::vector<CalendarRow> foreignRows();
/// What the calendar service itself gives up where folders need not: when it reads its file, it drops a rule
/// with such a part, and of one with an empty part between others all that follows. Nobody can ask it for
/// such events.
[[nodiscard]] std::vector<CalendarRow> folderRows();

/// The time zones that the rows name and define themselves.
[[nodiscard]] QByteArray definedZones();

} // namespace corvane
