// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

#include <vector>

namespace corvane {

/// The value of a recurrence rule in the form that the calendar library reads, if its meaning is clear;
/// otherwise unchanged. Leaves out private and empty parts, blanks, and repeated numbers and days.
[[nodiscard]] QByteArray repairedRule(const QByteArray &value);

/// A time or a date in the form that the calendar library reads, if its meaning is clear; otherwise
/// unchanged. Adds missing seconds and converts times with an offset to UTC.
[[nodiscard]] QByteArray repairedTime(const QByteArray &value);

/// The lines to read in place of `line` (name, parameters and value, unfolded): usually only that line. A
/// list of dates becomes several lines if necessary.
[[nodiscard]] std::vector<QByteArray> repairedLines(const QByteArray &line);

/// The position of the colon between a line's name with its parameters and its value; -1 if there is none.
[[nodiscard]] qsizetype valueSeparator(QByteArrayView line);

/// The name of a line's property, in upper case.
[[nodiscard]] QByteArray propertyName(QByteArrayView line);

/// Whether a property of this name tells when an event occurs.
[[nodiscard]] bool tellsTime(const QByteArray &name);

} // namespace corvane
