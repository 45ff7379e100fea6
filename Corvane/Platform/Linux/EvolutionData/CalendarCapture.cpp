// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/CalendarCapture.h"

#include <cstddef>
#include <map>
#include <memory>

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
    std::map<std::shared_ptr<DefinedZones>, QByteArray> events;
    for (const ComponentGroup &group : groups) {
        for (const EventComponent &event : group.components) {
            events[event.zones] += componentText(event.component.get());
        }
    }
    QByteArray text = events.empty() ? wrapCalendar({}) : QByteArray();
    for (const auto &[zones, components] : events) {
        QByteArray definitions;
        if (zones) {
            for (const auto &definition : zones->definitions()) {
                definitions += componentText(definition.get());
            }
        }
        text += wrapCalendar(definitions + components);
    }
    return text;
}

QByteArray captureSpan(const std::vector<ComponentGroup> &groups, ExpansionRequest request, DateInterval span,
                       ExpansionControl &control)
{
    // Several days may have more occurrences than one.
    constexpr int days = 10;
    request.interval = span;
    request.knownSeries.clear();
    request.budget.occurrencesOfEvent *= days;
    request.budget.occurrences *= days;
    request.budget.inWindowOfEvent *= days;
    std::vector<ComponentGroup> occurring;
    for (const std::size_t place : expandGroups(groups, request, control).occurring) {
        occurring.push_back(groups[place]);
    }
    return captureGroups(occurring);
}

} // namespace corvane
