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
    /// Identifies this skipped event; changes when the event changes.
    QByteArray key;
    /// For the log: one line of prose and quoted texts.
    QString text;
};

/// The result for one group.
struct GroupOutcome {
    std::vector<CalendarEvent> events;
    std::vector<SkippedEvent> skippedEvents;
    /// The length of its texts in the calendar's budget; counts also when the outcome is already known.
    qsizetype text = 0;
};

/// The result for all groups. An incomplete one contains the single events and the series that were finished
/// before it was stopped.
struct Expansion {
    std::vector<CalendarEvent> events;
    std::vector<SkippedEvent> skippedEvents;
    /// The outcomes of the series, for the next expansion of the same interval in the same time zone.
    std::map<QByteArray, std::shared_ptr<const GroupOutcome>> series;
    /// The series that an incomplete expansion lacks, with their titles.
    std::vector<SkippedEvent> unfinishedSeries;
    /// Names of unknown time zones, for which the user's own is used.
    std::set<QByteArray> unknownZones;
    /// The indices of the groups that have events.
    std::vector<std::size_t> occurring;
    bool isComplete = true;
};

/// Lets the main thread stop an expansion and see what it is working on.
class ExpansionControl {
public:
    /// Makes the expansion end at the next opportunity.
    void cancel()
    {
        m_isCancelled = true;
        g_cancellable_cancel(m_cancellable.get());
    }
    [[nodiscard]] bool isCancelled() const { return m_isCancelled; }
    [[nodiscard]] GCancellable *cancellable() const { return m_cancellable.get(); }

    /// The series that is being expanded: a hash of its key, or 0.
    std::atomic<std::size_t> busyWith = 0;
    /// Whether the current work can be stopped without harm.
    std::atomic<bool> isOptional = false;

private:
    std::atomic<bool> m_isCancelled = false;
    GObjectRef<GCancellable> m_cancellable = GObjectRef<GCancellable>::adopt(g_cancellable_new());
};

/// The input of an expansion.
struct ExpansionRequest {
    DateInterval interval;
    /// The zone of floating times and of whole days, for example "Europe/Berlin".
    QByteArray timeZoneId;
    /// Outcomes of an earlier expansion of the same interval in the same time zone.
    std::map<QByteArray, std::shared_ptr<const GroupOutcome>> knownSeries = {};
    /// Series (hashes of their keys) that an earlier expansion did not finish in time; they are left out.
    std::set<std::size_t> suspects = {};
    ExpansionBudget budget = {};
};

} // namespace corvane
