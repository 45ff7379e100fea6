// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/Expansion.h"
#include "Corvane/Platform/Linux/EvolutionData/SeriesChanges.h"

#include <map>
#include <optional>

namespace corvane {

/// The expansion of one group, which is borrowed, as all else is.
class GroupExpansion {
public:
    GroupExpansion(const ComponentGroup &group, const ExpansionRequest &request, ExpansionControl &control,
                   ZoneTable &zones);

    /// How many steps it takes to follow the rules of the group; those that take too many are refused.
    [[nodiscard]] double plan();

    /// Leaves out whatever repeats.
    void refuse(const QString &reason);

    /// Nothing when it was cancelled.
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
    /// The window to walk through, in seconds since 1970: wider than the interval, since it is in no one's
    /// zone.
    double m_from;
    double m_to;
    std::map<const EventComponent *, QString> m_refusals;
    /// Read once, however often an event occurs.
    std::map<const EventComponent *, CalendarEvent> m_texts;
    GroupOutcome m_outcome;
};

/// For the log: an event that is left out.
[[nodiscard]] SkippedEvent skippedEvent(ICalComponent *event, const QString &reason);

} // namespace corvane
