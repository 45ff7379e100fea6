// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/Expansion.h"
#include "Corvane/Platform/Linux/EvolutionData/SeriesChanges.h"

#include <map>
#include <optional>

namespace corvane {

/// The expansion of one group. The constructor's arguments are borrowed.
class GroupExpansion {
public:
    GroupExpansion(const ComponentGroup &group, const ExpansionRequest &request, ExpansionControl &control,
                   ZoneTable &zones);

    /// How many steps it takes to follow the group's rules. Rules that take too many are refused.
    [[nodiscard]] double plan();

    /// Leaves out all repeating components.
    void refuse(const QString &reason);

    /// None if it was cancelled.
    [[nodiscard]] std::optional<GroupOutcome> run();

private:
    struct Walk;

    static gboolean takeInstance(ICalComponent *, ICalTime *startTime, ICalTime *endTime, gpointer data,
                                 GCancellable *, GError **);
    static ICalTimezone *resolveZone(const gchar *tzid, gpointer data, GCancellable *, GError **);

    [[nodiscard]] bool expand(const EventComponent &event);
    [[nodiscard]] QString walkThrough(Walk &walk);
    [[nodiscard]] bool take(Walk &walk, ICalTime *startTime, ICalTime *endTime);
    [[nodiscard]] bool lastsTooLong(const EventComponent &event) const;
    [[nodiscard]] bool isFarOff(const EventComponent &event) const;
    [[nodiscard]] const CalendarEvent &texts(const EventComponent &event);
    void skipEvent(const EventComponent &event, const QString &reason);

    const ComponentGroup &m_group;
    const ExpansionRequest &m_request;
    ExpansionControl &m_control;
    ZoneTable &m_zones;
    EventTimes m_times;
    SeriesChanges m_changes;
    /// The window to walk through, in seconds since 1970: wider than the interval by a day on each side, to
    /// suit any time zone, and by the furthest shift.
    double m_from;
    double m_to;
    std::map<const EventComponent *, QString> m_refusals;
    /// Read once per component, however often it occurs.
    std::map<const EventComponent *, CalendarEvent> m_texts;
    GroupOutcome m_outcome;
};

/// A left-out event, for the log.
[[nodiscard]] SkippedEvent skippedEvent(ICalComponent *event, const QString &reason);

} // namespace corvane
