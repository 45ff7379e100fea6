// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/Revisions.h"

#include "Corvane/Platform/Linux/EvolutionData/ComponentRepairs.h"
#include "Corvane/Platform/Linux/EvolutionData/EventRules.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// Ordered from old to new.
struct Revision {
    int sequence = 0;
    time_t stamp = 0;
    bool isCancelled = false;

    friend auto operator<=>(const Revision &, const Revision &) = default;
};

Revision revisionOf(ICalComponent *event)
{
    const auto stamp = GObjectRef<ICalTime>::adopt(i_cal_component_get_dtstamp(event));
    const bool isStamped = stamp && i_cal_time_is_null_time(stamp.get()) == FALSE;
    return {i_cal_component_get_sequence(event), isStamped ? i_cal_time_as_timet(stamp.get()) : 0,
            i_cal_component_get_status(event) == I_CAL_STATUS_CANCELLED};
}

bool isOfNoKnownInstance(ICalComponent *event)
{
    // It is unknown which instance it changes.
    return unreadablePart(event) == u"RECURRENCE-ID";
}

} // namespace

void keepNewestRevisions(ComponentGroup &group, const EventTimes &times)
{
    if (group.components.size() < 2) {
        return;
    }
    ICalTimezone *seriesZone = times.seriesZone(group);
    std::map<std::optional<ChangedInstance>, std::pair<std::size_t, Revision>> newest;
    std::vector<bool> isKept(group.components.size(), false);
    for (std::size_t index = 0; index < group.components.size(); ++index) {
        const EventComponent &event = group.components[index];
        if (isOfNoKnownInstance(event.component.get())) {
            isKept[index] = true;
            continue;
        }
        const Revision revision = revisionOf(event.component.get());
        const auto [place, isNew] =
            newest.try_emplace(times.changedInstance(event, seriesZone), index, revision);
        if (!isNew && revision >= place->second.second) {
            place->second = {index, revision};
        }
    }
    const auto series = newest.find(std::nullopt);
    for (const auto &[instance, one] : newest) {
        const bool isCalledOff =
            series != newest.end() && series->second.second.isCancelled && one.second < series->second.second;
        isKept[one.first] = !isCalledOff;
    }
    std::vector<EventComponent> kept;
    for (std::size_t index = 0; index < group.components.size(); ++index) {
        if (isKept[index]) {
            kept.push_back(std::move(group.components[index]));
        }
    }
    group.components = std::move(kept);
}

} // namespace corvane
