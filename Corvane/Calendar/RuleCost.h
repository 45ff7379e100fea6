// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <expected>
#include <limits>
#include <vector>

namespace corvane {

enum class RuleFrequency { secondly, minutely, hourly, daily, weekly, monthly, yearly };

/// The numbers of a rule by which an event repeats. The lists are those of its BY parts, empty where it has
/// none.
struct RecurrenceRule {
    RuleFrequency frequency = RuleFrequency::yearly;
    int interval = 1;
    /// 0: no limit.
    int count = 0;
    /// The last moment, in seconds since 1970.
    double until = std::numeric_limits<double>::infinity();
    std::vector<short> seconds;
    std::vector<short> minutes;
    std::vector<short> hours;
    /// Days of the week, 1 to 7; others name one week of a month or year.
    std::vector<short> days;
    std::vector<short> monthDays;
    std::vector<short> yearDays;
    std::vector<short> weeks;
    std::vector<short> months;
};

/// What following a rule costs.
struct RuleCost {
    /// How many times the rule is stepped on until the end of the window: four microseconds each.
    double steps = 0;
    /// How many occurrences lie in the window, at most.
    double occurrences = 0;
};

/// What it costs to follow `rule` from an event's start through a window that begins at `from` and ends at
/// `to` (seconds since 1970), or why that cannot be told: a rule that may never come true is stepped on for
/// thousands of years.
[[nodiscard]] std::expected<RuleCost, QString> ruleCost(const RecurrenceRule &rule, double start, double from,
                                                        double to);

} // namespace corvane
