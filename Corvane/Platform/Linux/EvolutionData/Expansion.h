// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/GObjectRef.h"

#include <libecal/libecal.h>

#include "Corvane/Calendar/CalendarEvent.h"
#include "Corvane/Platform/Linux/EvolutionData/ComponentGroups.h"
#include "Corvane/Platform/Linux/EvolutionData/EventTexts.h"
#include "Corvane/Platform/Linux/EvolutionData/ExpansionBudget.h"
#include "Corvane/Utilities/DayCalendar.h"

#include <QByteArray>
#include <QString>

#include <atomic>
#include <map>
#include <memory>
#include <set>
#include <vector>

namespace corvane {

/// An event that is left out, and why.
struct SkippedEvent {
    /// Tells this skipped event from every other; changes when the event changes.
    QByteArray key;
    /// For the log: prose and quoted texts in one line.
    QString text;
};

/// What became of one group.
struct GroupOutcome {
    std::vector<CalendarEvent> events;
    std::vector<SkippedEvent> skippedEvents;
    /// What it counts for in the budget of its calendar, when it is known already, too.
    qsizetype text = 0;
};

/// What became of all groups. An incomplete one has the single events and the series that were finished, as
/// far as they were reached.
struct Expansion {
    std::vector<CalendarEvent> events;
    std::vector<SkippedEvent> skippedEvents;
    /// The outcomes of the series, for the next expansion of the same interval in the same time zone.
    std::map<QByteArray, std::shared_ptr<const GroupOutcome>> series;
    /// The series that were not finished, with their titles: what an incomplete expansion lacks.
    std::vector<SkippedEvent> unfinishedSeries;
    /// Names of time zones that nobody knows: the user's own stands in.
    std::set<QByteArray> unknownZones;
    /// The places of the groups that gave events.
    std::vector<std::size_t> occurring;
    bool isComplete = true;
};

/// Lets the main thread stop an expansion and see what it is busy with.
class ExpansionControl {
public:
    /// Makes the expansion end at the next chance.
    void cancel()
    {
        m_isCancelled = true;
        g_cancellable_cancel(m_cancellable.get());
    }
    [[nodiscard]] bool isCancelled() const { return m_isCancelled; }
    [[nodiscard]] GCancellable *cancellable() const { return m_cancellable.get(); }

    /// Which series is being expanded: a hash of its key, or 0.
    std::atomic<std::size_t> busyWith = 0;
    /// What is done now may be cut short without harm.
    std::atomic<bool> isOptional = false;

private:
    std::atomic<bool> m_isCancelled = false;
    GObjectRef<GCancellable> m_cancellable = GObjectRef<GCancellable>::adopt(g_cancellable_new());
};

/// What an expansion needs to know.
struct ExpansionRequest {
    DateInterval interval;
    /// The zone of floating times and of whole days, for example "Europe/Berlin".
    QByteArray timeZoneId;
    /// Outcomes of an earlier expansion of the same interval in the same time zone.
    std::map<QByteArray, std::shared_ptr<const GroupOutcome>> knownSeries = {};
    /// Series (hashes of their keys) that an earlier expansion did not finish in time: left out.
    std::set<std::size_t> suspects = {};
    ExpansionBudget budget = {};
};

} // namespace corvane
