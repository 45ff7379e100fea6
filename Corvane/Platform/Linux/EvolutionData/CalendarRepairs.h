// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

#include <vector>

namespace corvane {

/// The value of a recurrence rule in the form that the calendar library reads, where its meaning is plain;
/// otherwise as it is. Without private and empty parts, blanks, and numbers and days that it names twice.
[[nodiscard]] QByteArray repairedRule(const QByteArray &value);

/// A time, or a date, in the form that the calendar library reads, where its meaning is plain; otherwise as
/// it is. Times without seconds get them, those with an offset are told in UTC.
[[nodiscard]] QByteArray repairedTime(const QByteArray &value);

/// The lines that are to be read in the place of `line` (name, parameters and value, without folds): mostly
/// that line alone. A list of dates becomes several lines where it has to.
[[nodiscard]] std::vector<QByteArray> repairedLines(const QByteArray &line);

/// The place of the colon between a line's name with its parameters and its value, or -1.
[[nodiscard]] qsizetype valueSeparator(QByteArrayView line);

/// The name of a line's property, in capitals.
[[nodiscard]] QByteArray propertyName(QByteArrayView line);

} // namespace corvane
