// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/GroupExpansion.h"

#include "Corvane/Platform/Linux/EvolutionData/ComponentRepairs.h"
#include "Corvane/Platform/Linux/EvolutionData/EventRules.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr double day = 86'400;
/// The library computes the end of each occurrence month by month. In seconds.
constexpr double longestInSeries = 366 * day;
constexpr double longestAlone = 100 * longestInSeries;
/// A longer identifier is cut. In bytes.
constexpr std::size_t longestIdentifier = 1'000;

bool isCancelled(const EventComponent &event)
{
    return i_cal_component_get_status(event.component.get()) == I_CAL_STATUS_CANCELLED;
}

bool isChange(const EventComponent &event)
{
    return has(event.component.get(), I_CAL_RECURRENCEID_PROPERTY);
}

GObjectRef<ICalTime> utcTime(double moment)
{
    return GObjectRef<ICalTime>::adopt(i_cal_time_new_from_timet_with_zone(
        static_cast<time_t>(moment), 0, i_cal_timezone_get_utc_timezone()));
}

} // namespace

struct GroupExpansion::Walk {
    GroupExpansion &self;
    const EventComponent &event;
    bool isChange;
    std::vector<CalendarEvent> events;
    /// Why the walk was stopped early.
    QString refusal;
};

SkippedEvent skippedEvent(ICalComponent *event, const QString &reason)
{
    const char *uid = i_cal_component_get_uid(event);
    const QString title = eventTexts(event).title.value_or(QString());
    const QString text = u"title=\"%1\" reason=\"%2\""_s.arg(logText(title), reason);
    QByteArray key = text.toUtf8();
    key.append('\0').append(uid,
                            static_cast<qsizetype>(uid != nullptr ? strnlen(uid, longestIdentifier) : 0));
    return {key, text};
}

GroupExpansion::GroupExpansion(const ComponentGroup &group, const ExpansionRequest &request,
                               ExpansionControl &control, ZoneTable &zones)
    : m_group(group)
    , m_request(request)
    , m_control(control)
    , m_zones(zones)
    , m_times(zones)
    , m_changes(group, m_times)
    , m_from(std::floor(secondsSince1970(request.interval.start) - day - m_changes.furthestShift()))
    , m_to(std::ceil(secondsSince1970(request.interval.end) + day + m_changes.furthestShift()))
{
}

double GroupExpansion::plan()
{
    double steps = 0;
    for (const EventComponent &event : m_group.components) {
        const double start = m_times.firstSpan(event, m_to).start;
        if (const auto own = stepsOf(event.component.get(), start, m_from, m_to, m_request.budget)) {
            steps += *own;
        } else {
            m_refusals.emplace(&event, own.error());
        }
    }
    return steps;
}

void GroupExpansion::refuse(const QString &reason)
{
    for (const EventComponent &event : m_group.components) {
        if (repeats(event.component.get())) {
            m_refusals.emplace(&event, reason);
        }
    }
}

std::optional<GroupOutcome> GroupExpansion::run()
{
    for (const EventComponent &event : m_group.components) {
        // Without its rule, a series looks like a single event.
        const bool mayRecur = hasLostRule(event.component.get());
        if (isCancelled(event) || (isFarOff(event) && !mayRecur)) {
            continue;
        }
        const QString part = unreadablePart(event.component.get());
        if (!part.isEmpty()) {
            skipEvent(event, u"its %1 cannot be read"_s.arg(part));
            // It is unknown which instance it changes.
            if (part == u"RECURRENCE-ID") {
                continue;
            }
        }
        // The library would search for the first occurrence for a long time.
        if (!startYear(event.component.get())) {
            if (part.isEmpty()) {
                skipEvent(event, u"it does not tell when it begins"_s);
            }
            continue;
        }
        if (!hasSoundTimes(event.component.get())) {
            skipEvent(event, u"its times cannot be read"_s);
        } else if (lastsTooLong(event)) {
            skipEvent(event, u"it lasts too long"_s);
        } else if (const auto refusal = m_refusals.find(&event); refusal != m_refusals.end()) {
            skipEvent(event, refusal->second);
        } else if (!expand(event)) {
            return std::nullopt;
        }
    }
    return std::move(m_outcome);
}

/// False if it was cancelled.
bool GroupExpansion::expand(const EventComponent &event)
{
    Walk walk{*this, event, isChange(event), {}, {}};
    const QString error = walkThrough(walk);
    if (m_control.isCancelled()) {
        return false;
    }
    if (const QString reason = walk.refusal.isEmpty() ? error : walk.refusal; !reason.isEmpty()) {
        skipEvent(event, reason);
        return true;
    }
    std::ranges::move(walk.events, std::back_inserter(m_outcome.events));
    return true;
}

/// The library's error message; empty on success.
QString GroupExpansion::walkThrough(Walk &walk)
{
    GError *error = nullptr;
    const gboolean isDone = e_cal_recur_generate_instances_sync(
        walk.event.component.get(), utcTime(m_from).get(), utcTime(m_to).get(), &GroupExpansion::takeInstance,
        &walk, &GroupExpansion::resolveZone, &walk, m_zones.own(), m_control.cancellable(), &error);
    const QString message = error != nullptr ? logText(QString::fromUtf8(error->message)) : QString();
    g_clear_error(&error);
    return isDone == FALSE ? message : QString();
}

ICalTimezone *GroupExpansion::resolveZone(const gchar *tzid, gpointer data, GCancellable *, GError **)
{
    const auto &walk = *static_cast<Walk *>(data);
    return walk.self.m_zones.find(tzid, *walk.event.zones);
}

gboolean GroupExpansion::takeInstance(ICalComponent *, ICalTime *startTime, ICalTime *endTime, gpointer data,
                                      GCancellable *, GError **)
{
    auto &walk = *static_cast<Walk *>(data);
    return walk.self.take(walk, startTime, endTime) ? TRUE : FALSE;
}

/// Whether to go on with the walk.
bool GroupExpansion::take(Walk &walk, ICalTime *startTime, ICalTime *endTime)
{
    if (m_control.isCancelled()) {
        return false;
    }
    double start = m_times.moment(startTime);
    double end = std::max(start, m_times.moment(endTime));
    const EventComponent *event = &walk.event;
    if (!walk.isChange) {
        if (m_changes.contains(start, startTime)) {
            return true;
        }
        if (const SeriesChanges::Rest *rest = m_changes.restAt(start)) {
            if (isCancelled(*rest->event)) {
                return true;
            }
            event = rest->event;
            start += rest->shift;
            end = start + rest->duration;
        }
    }
    const double from = secondsSince1970(m_request.interval.start);
    const double to = secondsSince1970(m_request.interval.end);
    if (!(start < to && (end > from || (start == end && start >= from)))) {
        return true;
    }
    if (walk.events.size() >= m_request.budget.occurrencesOfEvent) {
        walk.refusal = u"it occurs too often"_s;
        return false;
    }
    CalendarEvent made = texts(*event);
    if (made.title && made.title->size() > m_request.budget.titleLength) {
        walk.refusal = u"its title is too long"_s;
        return false;
    }
    made.startDate = dateSince1970(start);
    made.endDate = dateSince1970(end);
    made.isAllDay = i_cal_time_is_date(startTime) != FALSE;
    walk.events.push_back(std::move(made));
    return true;
}

/// Whether an event that does not repeat lies outside the window; faster than a walk.
bool GroupExpansion::isFarOff(const EventComponent &event) const
{
    if (repeats(event.component.get())) {
        return false;
    }
    const EventSpan span = m_times.firstSpan(event, m_from);
    return span.start >= m_to || std::max(span.start, span.end) < m_from;
}

bool GroupExpansion::lastsTooLong(const EventComponent &event) const
{
    const EventSpan span = m_times.firstSpan(event, m_from);
    return span.end - span.start > (repeats(event.component.get()) ? longestInSeries : longestAlone);
}

const CalendarEvent &GroupExpansion::texts(const EventComponent &event)
{
    const auto [place, isNew] = m_texts.try_emplace(&event);
    if (isNew) {
        place->second = eventTexts(event.component.get());
        m_outcome.text += textLength(place->second);
    }
    return place->second;
}

void GroupExpansion::skipEvent(const EventComponent &event, const QString &reason)
{
    m_outcome.skippedEvents.push_back(skippedEvent(event.component.get(), reason));
}

} // namespace corvane
