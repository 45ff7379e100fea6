// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/SeriesChanges.h"

#include "Corvane/Platform/Linux/EvolutionData/EventRules.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace corvane {

namespace {

/// How far a changed rest of a series may be moved, in seconds: the window is widened by its actual shift.
constexpr double maximumShift = 60 * 86'400.0;

GObjectRef<ICalProperty> firstProperty(ICalComponent *component, ICalPropertyKind kind)
{
    return GObjectRef<ICalProperty>::adopt(i_cal_component_get_first_property(component, kind));
}

qint64 dayNumber(ICalTime *time)
{
    return i_cal_time_get_year(time) * 10'000LL + i_cal_time_get_month(time) * 100LL +
           i_cal_time_get_day(time);
}

/// Null if the property names no zone.
GObjectRef<ICalParameter> zoneName(ICalProperty *property)
{
    return GObjectRef<ICalParameter>::adopt(
        i_cal_property_get_first_parameter(property, I_CAL_TZID_PARAMETER));
}

} // namespace

double EventTimes::moment(ICalTime *time) const
{
    if (i_cal_time_is_utc(time) != FALSE) {
        return static_cast<double>(i_cal_time_as_timet(time));
    }
    ICalTimezone *zone = i_cal_time_is_date(time) != FALSE ? nullptr : i_cal_time_get_timezone(time);
    return static_cast<double>(i_cal_time_as_timet_with_zone(time, zone != nullptr ? zone : m_zones.own()));
}

double EventTimes::moment(ICalProperty *property, ICalTime *time, DefinedZones &definitions,
                          ICalTimezone *otherwise) const
{
    if (i_cal_time_is_utc(time) != FALSE) {
        return static_cast<double>(i_cal_time_as_timet(time));
    }
    ICalTimezone *zone = m_zones.own();
    if (i_cal_time_is_date(time) == FALSE) {
        const auto name = zoneName(property);
        zone = name ? m_zones.find(i_cal_parameter_get_tzid(name.get()), definitions) : otherwise;
    }
    return static_cast<double>(i_cal_time_as_timet_with_zone(time, zone));
}

EventSpan EventTimes::firstSpan(const EventComponent &event, double otherwise) const
{
    const auto begin = firstProperty(event.component.get(), I_CAL_DTSTART_PROPERTY);
    if (!begin) {
        return {otherwise, otherwise};
    }
    const auto startTime = GObjectRef<ICalTime>::adopt(i_cal_property_get_dtstart(begin.get()));
    const double start = moment(begin.get(), startTime.get(), *event.zones, m_zones.own());
    if (const auto finish = firstProperty(event.component.get(), I_CAL_DTEND_PROPERTY)) {
        const auto endTime = GObjectRef<ICalTime>::adopt(i_cal_property_get_dtend(finish.get()));
        return {start, moment(finish.get(), endTime.get(), *event.zones, m_zones.own())};
    }
    const auto length = GObjectRef<ICalDuration>::adopt(i_cal_component_get_duration(event.component.get()));
    return {start, length ? start + i_cal_duration_as_int(length.get()) : start};
}

ICalTimezone *EventTimes::seriesZone(const ComponentGroup &group) const
{
    const auto series = std::ranges::find_if(group.components, [](const EventComponent &event) {
        return !has(event.component.get(), I_CAL_RECURRENCEID_PROPERTY);
    });
    const EventComponent &event = series != group.components.end() ? *series : group.components.front();
    const auto begin = firstProperty(event.component.get(), I_CAL_DTSTART_PROPERTY);
    const auto name = begin ? zoneName(begin.get()) : GObjectRef<ICalParameter>();
    return name ? m_zones.find(i_cal_parameter_get_tzid(name.get()), *event.zones) : m_zones.own();
}

std::optional<ChangedInstance> EventTimes::changedInstance(const EventComponent &event,
                                                           ICalTimezone *seriesZone) const
{
    const auto property = firstProperty(event.component.get(), I_CAL_RECURRENCEID_PROPERTY);
    const auto time = property ? GObjectRef<ICalTime>::adopt(i_cal_property_get_recurrenceid(property.get()))
                               : GObjectRef<ICalTime>();
    if (!time || i_cal_time_is_null_time(time.get()) != FALSE) {
        return std::nullopt;
    }
    return ChangedInstance{moment(property.get(), time.get(), *event.zones, seriesZone),
                           i_cal_time_is_date(time.get()) != FALSE};
}

SeriesChanges::SeriesChanges(const ComponentGroup &group, const EventTimes &times)
{
    if (group.components.size() == 1 &&
        !has(group.components.front().component.get(), I_CAL_RECURRENCEID_PROPERTY)) {
        return;
    }
    ICalTimezone *seriesZone = times.seriesZone(group);
    for (const EventComponent &event : group.components) {
        if (const auto instance = times.changedInstance(event, seriesZone)) {
            add(event, *instance, times);
        }
    }
}

void SeriesChanges::add(const EventComponent &event, ChangedInstance instance, const EventTimes &times)
{
    const auto property = firstProperty(event.component.get(), I_CAL_RECURRENCEID_PROPERTY);
    if (instance.isDay) {
        const auto time = GObjectRef<ICalTime>::adopt(i_cal_property_get_recurrenceid(property.get()));
        m_changedDays.insert(dayNumber(time.get()));
    }
    m_changed.insert(instance.start);
    const auto range = GObjectRef<ICalParameter>::adopt(
        i_cal_property_get_first_parameter(property.get(), I_CAL_RANGE_PARAMETER));
    if (range && i_cal_parameter_get_range(range.get()) == I_CAL_RANGE_THISANDFUTURE) {
        const EventSpan span = times.firstSpan(event, instance.start);
        const double shift = std::clamp(span.start - instance.start, -maximumShift, maximumShift);
        m_rests.insert_or_assign(instance.start, Rest{shift, std::max(0.0, span.end - span.start), &event});
        m_furthestShift = std::max(m_furthestShift, std::abs(shift));
    }
}

bool SeriesChanges::contains(double start, ICalTime *startTime) const
{
    return m_changed.contains(start) ||
           (!m_changedDays.empty() && m_changedDays.contains(dayNumber(startTime)));
}

const SeriesChanges::Rest *SeriesChanges::restAt(double start) const
{
    const auto after = m_rests.upper_bound(start);
    return after != m_rests.begin() ? &std::prev(after)->second : nullptr;
}

} // namespace corvane
