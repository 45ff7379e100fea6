// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <expected>
#include <limits>
#include <vector>

namespace corvane {

enum class RuleFrequency { secondly, minutely, hourly, daily, weekly, monthly, yearly };

/// A recurrence rule. The lists are its BY parts, empty if it has none.
struct RecurrenceRule {
    RuleFrequency frequency = RuleFrequency::yearly;
    int interval = 1;
    /// 0 means no limit.
    int count = 0;
    /// The last moment, in seconds since 1970 UTC.
    double until = std::numeric_limits<double>::infinity();
    std::vector<short> seconds;
    std::vector<short> minutes;
    std::vector<short> hours;
    /// Days of the week, 1 to 7; other values also encode a week of the month or year.
    std::vector<short> days;
    std::vector<short> monthDays;
    std::vector<short> yearDays;
    std::vector<short> weeks;
    std::vector<short> months;
};

/// What expanding a rule costs.
struct RuleCost {
    /// Iterations until the end of the window, about four microseconds each.
    double steps = 0;
    /// Upper bound of the occurrences in the window.
    double occurrences = 0;
};

/// The cost of expanding `rule` from an event's `start` through the window from `from` to `to` (seconds since
/// 1970 UTC). Fails with the reason if the cost is unbounded: a rule that may never match is iterated over
/// thousands of years.
[[nodiscard]] std::expected<RuleCost, QString> ruleCost(const RecurrenceRule &rule, double start, double from,
                                                        double to);

} // namespace corvane
