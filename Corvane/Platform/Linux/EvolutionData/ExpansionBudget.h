// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <cstddef>

namespace corvane {

/// What the events of one calendar may cost. What exceeds it is left out and named; other calendars are not
/// affected.
struct ExpansionBudget {
    /// The calendar library walks a rule from its first occurrence, at four microseconds per step.
    double stepsOfEvent = 150'000;
    double steps = 300'000;
    /// The library compares each occurrence in the window with all earlier ones: a quarter of a second for
    /// this many.
    double inWindowOfEvent = 1'500;
    /// No lesson has more rules, or more dates added to its series and removed from it.
    int rulesOfEvent = 10;
    int datesOfEvent = 10'000;
    /// No lesson occurs more often in one day.
    std::size_t occurrencesOfEvent = 200;
    std::size_t occurrences = 2'000;
    /// In UTF-16 units. No lesson has a longer title.
    qsizetype titleLength = 2'000;
    /// Total length of the texts of all events found, in UTF-16 units; an event that occurs several times
    /// counts once.
    qsizetype text = qsizetype{8} * 1024 * 1024;
};

} // namespace corvane
