// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/ComponentGroups.h"

#include <compare>
#include <map>
#include <optional>
#include <set>

namespace corvane {

/// Moments are seconds since 1970.
struct EventSpan {
    double start;
    double end;
};

/// Which instance of a series a component stands for.
struct ChangedInstance {
    double start;
    /// Told as a day.
    bool isDay;

    friend auto operator<=>(const ChangedInstance &, const ChangedInstance &) = default;
};

/// Tells the moments that the properties of one group's components mean.
class EventTimes {
public:
    explicit EventTimes(ZoneTable &zones) : m_zones(zones) {}

    /// The moment of a time that the library has given a zone, or that is the user's.
    [[nodiscard]] double moment(ICalTime *time) const;

    /// The moment that a property tells in the zone that it names; without such a name, in `otherwise`.
    [[nodiscard]] double moment(ICalProperty *property, ICalTime *time, DefinedZones &definitions,
                                ICalTimezone *otherwise) const;

    /// Where a component begins and ends, the first time; at `otherwise` where it does not tell.
    [[nodiscard]] EventSpan firstSpan(const EventComponent &event, double otherwise) const;

    /// The zone in which the series of a group begins; the user's where it names none.
    [[nodiscard]] ICalTimezone *seriesZone(const ComponentGroup &group) const;

    /// Nothing for the series itself. Where the component names no zone, the instance is told on the clock of
    /// the series.
    [[nodiscard]] std::optional<ChangedInstance> changedInstance(const EventComponent &event,
                                                                 ICalTimezone *seriesZone) const;

private:
    ZoneTable &m_zones;
};

/// Which instances of a series were changed, and from where on.
class SeriesChanges {
public:
    SeriesChanges(const ComponentGroup &group, const EventTimes &times);

    /// "This and all that follow": by how much the rest of the series is moved, and how long it lasts.
    struct Rest {
        double shift;
        double duration;
        const EventComponent *event;
    };

    /// Whether a component stands in the place of the instance that begins at `start`.
    [[nodiscard]] bool contains(double start, ICalTime *startTime) const;
    /// The change that the instance at `start` and all that follow it have in common, or null.
    [[nodiscard]] const Rest *restAt(double start) const;
    /// The furthest that an instance is moved, in seconds.
    [[nodiscard]] double furthestShift() const { return m_furthestShift; }

private:
    void add(const EventComponent &event, ChangedInstance instance, const EventTimes &times);

    std::set<double> m_changed;
    std::set<qint64> m_changedDays;
    std::map<double, Rest> m_rests;
    double m_furthestShift = 0;
};

} // namespace corvane
