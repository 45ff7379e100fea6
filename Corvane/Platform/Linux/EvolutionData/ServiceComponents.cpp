// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/ServiceComponents.h"

#include <memory>
#include <utility>

namespace corvane {

std::set<QByteArray> zonesOf(const Components &components)
{
    std::set<QByteArray> zones;
    for (const auto &component : components) {
        zones.merge(timeZoneIdentifiers(component.get()));
    }
    return zones;
}

std::set<QByteArray> identifiersOf(const Components &components)
{
    std::set<QByteArray> identifiers;
    for (const auto &component : components) {
        if (const char *uid = i_cal_component_get_uid(component.get()); uid != nullptr) {
            identifiers.insert(uid);
        }
    }
    return identifiers;
}

void removeComponents(Components &components, const std::set<QByteArray> &identifiers)
{
    std::erase_if(components, [&identifiers](const auto &component) {
        const char *uid = i_cal_component_get_uid(component.get());
        return uid != nullptr && identifiers.contains(QByteArray(uid));
    });
}

std::vector<ComponentGroup> groupsOf(const Components &components, const FindZone &findZone)
{
    std::vector<GObjectRef<ICalComponent>> definitions;
    for (const QByteArray &identifier : zonesOf(components)) {
        ICalTimezone *zone = findZone(identifier.constData());
        const auto definition =
            GObjectRef<ICalComponent>::adopt(zone != nullptr ? i_cal_timezone_get_component(zone) : nullptr);
        if (definition) {
            // Cloned, because all threads share the client's component and reading it moves its iterators.
            definitions.push_back(GObjectRef<ICalComponent>::adopt(i_cal_component_clone(definition.get())));
        }
    }
    const auto zones = std::make_shared<DefinedZones>(std::move(definitions));
    std::vector<EventComponent> events;
    events.reserve(components.size());
    for (const auto &component : components) {
        events.push_back({component, zones});
    }
    return groupByIdentifier(std::move(events));
}

} // namespace corvane
