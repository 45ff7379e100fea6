// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <cstddef>

namespace corvane {

/// What the events of one calendar may cost. What exceeds it is left out by name, and costs no other calendar
/// anything.
struct ExpansionBudget {
    /// The calendar library walks a rule from its first occurrence, four microseconds a step.
    double stepsOfEvent = 150'000;
    double steps = 300'000;
    /// The library compares each occurrence in the window with those before: a quarter of a second for these.
    double inWindowOfEvent = 1'500;
    /// More rules, or more dates added to a series and taken from it, are no lessons.
    int rulesOfEvent = 10;
    int datesOfEvent = 10'000;
    /// More occurrences in one day are no lessons.
    std::size_t occurrencesOfEvent = 200;
    std::size_t occurrences = 2'000;
    /// A longer title is no lesson's. In characters.
    qsizetype titleLength = 2'000;
    /// Of the events that are found; those of an event that occurs several times count once. In characters.
    qsizetype text = qsizetype{8} * 1024 * 1024;
};

} // namespace corvane
