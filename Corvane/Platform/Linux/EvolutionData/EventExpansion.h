// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/GObjectRef.h"

#include <libecal/libecal.h>

#include "Corvane/Calendar/CalendarEvent.h"
#include "Corvane/Utilities/DayCalendar.h"

#include <QByteArray>
#include <QString>

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <vector>

namespace corvane {

/// The components of one identifier of one calendar: an event, or a series and its changed instances.
struct ComponentGroup {
    std::vector<GObjectRef<ICalComponent>> components;
};

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
};

/// What became of all groups. An incomplete one lacks the groups that were not reached.
struct Expansion {
    std::vector<CalendarEvent> events;
    std::vector<SkippedEvent> skippedEvents;
    /// The outcomes of the series, for the next expansion of the same interval in the same time zone.
    std::map<QByteArray, std::shared_ptr<const GroupOutcome>> series;
    bool isComplete = true;
    /// The identifiers of the groups that gave events; empty for those without.
    std::set<QByteArray> occurring;
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

private:
    std::atomic<bool> m_isCancelled = false;
    GObjectRef<GCancellable> m_cancellable = GObjectRef<GCancellable>::adopt(g_cancellable_new());
};

/// What an expansion needs to know.
struct ExpansionRequest {
    DateInterval interval;
    /// The zone of floating times and of whole days, for example "Europe/Berlin".
    QByteArray timeZoneId;
    /// Finds the zone of an identifier that is not known to the system; the answer is borrowed. May be called
    /// on any thread, but on one at a time.
    std::function<ICalTimezone *(const char *tzid)> customZone;
    /// Changes where the answers of `customZone` change: part of the keys of the series.
    QByteArray zoneKey;
    /// Outcomes of an earlier expansion of the same interval in the same time zone.
    std::map<QByteArray, std::shared_ptr<const GroupOutcome>> knownSeries;
    /// Series (hashes of their keys) that an earlier expansion did not finish in time: left out.
    std::set<std::size_t> suspects;
};

/// Every occurrence of `groups` that overlaps the interval: changed instances in the place of those of the
/// series, cancelled ones left out. Groups that would take too long or give too many occurrences are left out
/// and named. Slow: runs on a worker thread, on components that no other thread touches.
[[nodiscard]] Expansion expandGroups(const std::vector<ComponentGroup> &groups,
                                     const ExpansionRequest &request, ExpansionControl &control);

/// The groups of a list of components, by their identifiers; events only. A component without identifier is a
/// group of its own.
[[nodiscard]] std::vector<ComponentGroup>
groupByIdentifier(std::vector<GObjectRef<ICalComponent>> components);

/// The identifiers of the time zones that `component` names.
[[nodiscard]] std::set<QByteArray> timeZoneIdentifiers(ICalComponent *component);

/// `text` for a log line: at most 80 characters, in one line, without quotation marks.
[[nodiscard]] QString logText(const QString &text);

} // namespace corvane
