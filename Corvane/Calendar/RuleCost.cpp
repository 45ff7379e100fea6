// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/RuleCost.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr double day = 86'400;
/// Following a daily rule that never matches takes half a second for each part of the day; this many are
/// accepted.
constexpr double maximumParts = 4;

double lengthOf(RuleFrequency frequency)
{
    switch (frequency) {
    case RuleFrequency::secondly:
        return 1;
    case RuleFrequency::minutely:
        return 60;
    case RuleFrequency::hourly:
        return 3'600;
    case RuleFrequency::daily:
        return day;
    case RuleFrequency::weekly:
        return 7 * day;
    case RuleFrequency::monthly:
        return 30 * day;
    case RuleFrequency::yearly:
        break;
    }
    return 365 * day;
}

bool picksDates(const RecurrenceRule &rule)
{
    return !rule.monthDays.empty() || !rule.yearDays.empty() || !rule.weeks.empty() || !rule.months.empty();
}

double countOf(const std::vector<short> &numbers)
{
    return std::max(1.0, static_cast<double>(numbers.size()));
}

/// How many parts the rule's times of day divide a step into.
double partsOf(const RecurrenceRule &rule)
{
    switch (rule.frequency) {
    case RuleFrequency::secondly:
        return 1;
    case RuleFrequency::minutely:
        return countOf(rule.seconds);
    case RuleFrequency::hourly:
        return countOf(rule.minutes) * countOf(rule.seconds);
    case RuleFrequency::daily:
    case RuleFrequency::weekly:
    case RuleFrequency::monthly:
    case RuleFrequency::yearly:
        break;
    }
    return countOf(rule.hours) * countOf(rule.minutes) * countOf(rule.seconds);
}

bool mayNeverComeTrue(const RecurrenceRule &rule)
{
    switch (rule.frequency) {
    case RuleFrequency::secondly:
        return picksDates(rule) || !rule.days.empty() || !rule.hours.empty() || !rule.minutes.empty() ||
               !rule.seconds.empty();
    case RuleFrequency::minutely:
        return picksDates(rule) || !rule.days.empty() || !rule.hours.empty() || !rule.minutes.empty();
    case RuleFrequency::hourly:
        return picksDates(rule) || (rule.interval > 1 && (!rule.days.empty() || !rule.hours.empty())) ||
               std::ranges::any_of(rule.days, [](short number) { return number < 1 || number > 7; });
    case RuleFrequency::daily:
    case RuleFrequency::weekly:
    case RuleFrequency::monthly:
    case RuleFrequency::yearly:
        break;
    }
    return picksDates(rule) && partsOf(rule) > maximumParts;
}

} // namespace

std::expected<RuleCost, QString> ruleCost(const RecurrenceRule &rule, double start, double from, double to)
{
    if (mayNeverComeTrue(rule)) {
        return std::unexpected(u"its rule is too fine to be followed"_s);
    }
    double perStep = partsOf(rule);
    const bool isDivided = picksDates(rule) || !rule.days.empty();
    if (rule.frequency > RuleFrequency::daily && isDivided) {
        perStep *= std::ceil(lengthOf(rule.frequency) / day);
    }
    const double perSecond = perStep / (lengthOf(rule.frequency) * std::max(1, rule.interval));
    // `until` may be in the local time of another zone, so a day is added.
    const double end = std::min(to, rule.until + day);
    double steps = std::max(0.0, end - start) * perSecond;
    if (rule.count > 0 && !isDivided) {
        steps = std::min(steps, static_cast<double>(rule.count));
    }
    return RuleCost{steps, std::min(steps, (to - from) * perSecond)};
}

} // namespace corvane
