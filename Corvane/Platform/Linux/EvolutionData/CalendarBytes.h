// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <expected>

namespace corvane {

/// Why a calendar text cannot be used.
struct CalendarTextError {
    /// The text is incomplete or empty: its writer may be about to write the rest.
    bool isTruncated = false;
    /// For the log.
    QString reason;
};

/// Longer values are cut: a link or a keyword further in is of no use. In bytes of UTF-8.
inline constexpr qsizetype maximumValueBytes = 65'536;

/// The bytes of a calendar file as text that the calendar library reads in linear time: in UTF-8 (from UTF-8,
/// UTF-16, Latin-1 or Windows-1252), without zeros, with long values cut and all lines folded, and reduced to
/// events and time zones. A pure function.
[[nodiscard]] std::expected<QByteArray, CalendarTextError> toCalendarText(const QByteArray &bytes);

} // namespace corvane
