// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/CalendarCapture.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

namespace corvane {

namespace {

QByteArray componentText(ICalComponent *component)
{
    char *text = i_cal_component_as_ical_string(component);
    const QByteArray copy(text);
    g_free(text);
    return copy;
}

QByteArray wrapCalendar(const QByteArray &components)
{
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Quillet//EN\r\n" + components + "END:VCALENDAR\r\n";
}

} // namespace

QByteArray captureGroups(const std::vector<ComponentGroup> &groups)
{
    // In order of appearance, so that the same calendar gives the same text.
    std::vector<std::pair<std::shared_ptr<DefinedZones>, QByteArray>> events;
    for (const ComponentGroup &group : groups) {
        for (const EventComponent &event : group.components) {
            auto place = std::ranges::find(events, event.zones, [](const auto &one) { return one.first; });
            if (place == events.end()) {
                place = events.insert(events.end(), {event.zones, QByteArray()});
            }
            place->second += componentText(event.component.get());
        }
    }
    QByteArray text = events.empty() ? wrapCalendar({}) : QByteArray();
    for (const auto &[zones, components] : events) {
        QByteArray definitions;
        for (const auto &definition : zones->definitions()) {
            definitions += componentText(definition.get());
        }
        text += wrapCalendar(definitions + components);
    }
    return text;
}

std::optional<QByteArray> captureSpan(const std::vector<ComponentGroup> &groups,
                                      const std::set<IdentifierKey> &shared, ExpansionRequest request,
                                      DateInterval span, ExpansionControl &control)
{
    control.isOptional = true;
    // Several days have more occurrences than one.
    constexpr int days = 10;
    request.interval = span;
    request.knownSeries.clear();
    request.budget.occurrencesOfEvent *= days;
    request.budget.occurrences *= days;
    const Expansion expansion = expandGroups(groups, request, control);
    if (!expansion.isComplete) {
        return std::nullopt;
    }
    const std::set<std::size_t> occurring(expansion.occurring.begin(), expansion.occurring.end());
    std::vector<ComponentGroup> captured;
    for (std::size_t place = 0; place < groups.size(); ++place) {
        // Shared events are kept even if they do not occur: another file may move one into the span, and a
        // cancellation has no occurrences.
        if (occurring.contains(place) || groups[place].isAmong(shared)) {
            captured.push_back(groups[place]);
        }
    }
    return captureGroups(captured);
}

} // namespace corvane
