// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/EventRules.h"

#include <QDate>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr double year = 365.25 * 86'400;

/// The numbers of one BY part of a rule.
std::vector<short> part(GArray *array)
{
    std::vector<short> numbers;
    for (guint index = 0; array != nullptr && index < array->len; ++index) {
        const gshort number = g_array_index(array, gshort, index);
        if (number == I_CAL_RECURRENCE_ARRAY_MAX) {
            break;
        }
        numbers.push_back(number);
    }
    if (array != nullptr) {
        g_array_unref(array);
    }
    return numbers;
}

RuleFrequency frequencyOf(ICalRecurrence *rule)
{
    switch (i_cal_recurrence_get_freq(rule)) {
    case I_CAL_SECONDLY_RECURRENCE:
        return RuleFrequency::secondly;
    case I_CAL_MINUTELY_RECURRENCE:
        return RuleFrequency::minutely;
    case I_CAL_HOURLY_RECURRENCE:
        return RuleFrequency::hourly;
    case I_CAL_DAILY_RECURRENCE:
        return RuleFrequency::daily;
    case I_CAL_WEEKLY_RECURRENCE:
        return RuleFrequency::weekly;
    case I_CAL_MONTHLY_RECURRENCE:
        return RuleFrequency::monthly;
    case I_CAL_YEARLY_RECURRENCE:
    case I_CAL_NO_RECURRENCE:
        break;
    }
    return RuleFrequency::yearly;
}

RecurrenceRule numbersOf(ICalRecurrence *rule)
{
    RecurrenceRule numbers;
    numbers.frequency = frequencyOf(rule);
    numbers.interval = i_cal_recurrence_get_interval(rule);
    numbers.count = i_cal_recurrence_get_count(rule);
    const auto until = GObjectRef<ICalTime>::adopt(i_cal_recurrence_get_until(rule));
    if (until && i_cal_time_is_null_time(until.get()) == FALSE) {
        numbers.until = static_cast<double>(i_cal_time_as_timet(until.get()));
    }
    numbers.seconds = part(i_cal_recurrence_get_by_second_array(rule));
    numbers.minutes = part(i_cal_recurrence_get_by_minute_array(rule));
    numbers.hours = part(i_cal_recurrence_get_by_hour_array(rule));
    numbers.days = part(i_cal_recurrence_get_by_day_array(rule));
    numbers.monthDays = part(i_cal_recurrence_get_by_month_day_array(rule));
    numbers.yearDays = part(i_cal_recurrence_get_by_year_day_array(rule));
    numbers.weeks = part(i_cal_recurrence_get_by_week_no_array(rule));
    numbers.months = part(i_cal_recurrence_get_by_month_array(rule));
    return numbers;
}

} // namespace

std::vector<GObjectRef<ICalComponent>> children(ICalComponent *parent, ICalComponentKind kind)
{
    std::vector<GObjectRef<ICalComponent>> found;
    for (ICalComponent *child = i_cal_component_get_first_component(parent, kind); child != nullptr;
         child = i_cal_component_get_next_component(parent, kind)) {
        found.push_back(GObjectRef<ICalComponent>::adopt(child));
    }
    return found;
}

bool has(ICalComponent *component, ICalPropertyKind kind)
{
    return static_cast<bool>(
        GObjectRef<ICalProperty>::adopt(i_cal_component_get_first_property(component, kind)));
}

std::vector<GObjectRef<ICalProperty>> properties(ICalComponent *component, ICalPropertyKind kind)
{
    std::vector<GObjectRef<ICalProperty>> found;
    for (ICalProperty *property = i_cal_component_get_first_property(component, kind); property != nullptr;
         property = i_cal_component_get_next_property(component, kind)) {
        found.push_back(GObjectRef<ICalProperty>::adopt(property));
    }
    return found;
}

bool repeats(ICalComponent *component)
{
    return has(component, I_CAL_RRULE_PROPERTY) || has(component, I_CAL_RDATE_PROPERTY) ||
           has(component, I_CAL_EXRULE_PROPERTY);
}

std::optional<int> startYear(ICalComponent *component)
{
    const auto property = GObjectRef<ICalProperty>::adopt(
        i_cal_component_get_first_property(component, I_CAL_DTSTART_PROPERTY));
    const auto time = property ? GObjectRef<ICalTime>::adopt(i_cal_property_get_dtstart(property.get()))
                               : GObjectRef<ICalTime>();
    if (!time || i_cal_time_is_null_time(time.get()) != FALSE) {
        return std::nullopt;
    }
    return i_cal_time_get_year(time.get());
}

bool hasSoundTimes(ICalComponent *component)
{
    for (const ICalPropertyKind kind : {I_CAL_DTSTART_PROPERTY, I_CAL_DTEND_PROPERTY}) {
        for (const auto &property : properties(component, kind)) {
            const auto time = GObjectRef<ICalTime>::adopt(kind == I_CAL_DTSTART_PROPERTY
                                                              ? i_cal_property_get_dtstart(property.get())
                                                              : i_cal_property_get_dtend(property.get()));
            if (!time || !QDate::isValid(i_cal_time_get_year(time.get()), i_cal_time_get_month(time.get()),
                                         i_cal_time_get_day(time.get()))) {
                return false;
            }
        }
    }
    return true;
}

std::vector<RecurrenceRule> rulesOf(ICalComponent *component)
{
    std::vector<RecurrenceRule> rules;
    for (const ICalPropertyKind kind : {I_CAL_RRULE_PROPERTY, I_CAL_EXRULE_PROPERTY}) {
        for (const auto &property : properties(component, kind)) {
            const auto rule = GObjectRef<ICalRecurrence>::adopt(
                kind == I_CAL_RRULE_PROPERTY ? i_cal_property_get_rrule(property.get())
                                             : i_cal_property_get_exrule(property.get()));
            if (rule) {
                rules.push_back(numbersOf(rule.get()));
            }
        }
    }
    return rules;
}

std::expected<double, QString> stepsOf(ICalComponent *event, double start, double from, double to,
                                       const ExpansionBudget &budget)
{
    const auto count = [event](ICalPropertyKind kind) {
        return i_cal_component_count_properties(event, kind);
    };
    const int dates = count(I_CAL_RDATE_PROPERTY) + count(I_CAL_EXDATE_PROPERTY);
    if (dates > budget.datesOfEvent) {
        return std::unexpected(u"it lists too many dates"_s);
    }
    if (count(I_CAL_RRULE_PROPERTY) + count(I_CAL_EXRULE_PROPERTY) > budget.rulesOfEvent) {
        return std::unexpected(u"it has too many rules"_s);
    }
    // The library cannot express a start in the distant past in seconds, but it still walks the series from
    // there.
    const double longAgo = (startYear(event).value_or(1970) - 1970) * year + year;
    double steps = dates;
    double inWindow = 0;
    for (const RecurrenceRule &rule : rulesOf(event)) {
        const auto cost = ruleCost(rule, std::min(start, longAgo), from, to);
        if (!cost) {
            return std::unexpected(cost.error());
        }
        steps += cost->steps;
        inWindow += cost->occurrences;
    }
    if (inWindow > budget.inWindowOfEvent) {
        return std::unexpected(u"it occurs too often"_s);
    }
    if (steps > budget.stepsOfEvent) {
        return std::unexpected(u"it has repeated too often since its beginning"_s);
    }
    return steps;
}

} // namespace corvane
