// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/ComponentGroups.h"

#include <compare>
#include <map>
#include <optional>
#include <set>

namespace corvane {

/// Moments are in seconds since 1970.
struct EventSpan {
    double start;
    double end;
};

/// The instance of a series that a component replaces.
struct ChangedInstance {
    double start;
    /// Given as a date without a time.
    bool isDay;

    friend auto operator<=>(const ChangedInstance &, const ChangedInstance &) = default;
};

/// Computes the moments that the properties of one group's components stand for.
class EventTimes {
public:
    explicit EventTimes(ZoneTable &zones) : m_zones(zones) {}

    /// The moment of `time` in the zone that the library has given it, otherwise in the user's.
    [[nodiscard]] double moment(ICalTime *time) const;

    /// The moment of a property's `time`: in the zone that the property names, or in `otherwise` if it names
    /// none. A date is in the user's zone.
    [[nodiscard]] double moment(ICalProperty *property, ICalTime *time, DefinedZones &definitions,
                                ICalTimezone *otherwise) const;

    /// The first start and end of a component; `otherwise` for both if it has no start.
    [[nodiscard]] EventSpan firstSpan(const EventComponent &event, double otherwise) const;

    /// The zone in which the series of a group begins; the user's if it names none.
    [[nodiscard]] ICalTimezone *seriesZone(const ComponentGroup &group) const;

    /// None for the series itself. If the component names no zone, its time is in `seriesZone`.
    [[nodiscard]] std::optional<ChangedInstance> changedInstance(const EventComponent &event,
                                                                 ICalTimezone *seriesZone) const;

private:
    ZoneTable &m_zones;
};

/// The changed instances of a series, single ones and all from one on.
class SeriesChanges {
public:
    SeriesChanges(const ComponentGroup &group, const EventTimes &times);

    /// "This and all that follow": how far the rest of the series is moved and how long its instances last,
    /// in seconds.
    struct Rest {
        double shift;
        double duration;
        const EventComponent *event;
    };

    /// Whether a component replaces the instance that begins at `start`.
    [[nodiscard]] bool contains(double start, ICalTime *startTime) const;
    /// The change that applies to the instance at `start` and to all that follow, or null.
    [[nodiscard]] const Rest *restAt(double start) const;
    /// The furthest shift of an instance, in seconds.
    [[nodiscard]] double furthestShift() const { return m_furthestShift; }

private:
    void add(const EventComponent &event, ChangedInstance instance, const EventTimes &times);

    std::set<double> m_changed;
    std::set<qint64> m_changedDays;
    std::map<double, Rest> m_rests;
    double m_furthestShift = 0;
};

} // namespace corvane
