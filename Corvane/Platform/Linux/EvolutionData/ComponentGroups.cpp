// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/ComponentGroups.h"

#include "Corvane/Platform/Linux/EvolutionData/ComponentRepairs.h"
#include "Corvane/Platform/Linux/EvolutionData/EventRules.h"

#include <QCryptographicHash>

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <utility>

namespace corvane {

bool ComponentGroup::isSeries() const
{
    return components.size() > 1 || std::ranges::any_of(components, [](const EventComponent &event) {
               return repeats(event.component.get());
           });
}

bool ComponentGroup::isAmong(const std::set<IdentifierKey> &identifiers) const
{
    const char *uid = i_cal_component_get_uid(components.front().component.get());
    return uid != nullptr && identifiers.contains(identifierKey(uid));
}

QByteArray ComponentGroup::key() const
{
    QCryptographicHash hash(QCryptographicHash::Md5);
    for (const EventComponent &event : components) {
        hash.addData(event.zones->key());
        char *text = i_cal_component_as_ical_string(event.component.get());
        if (text != nullptr) {
            hash.addData(QByteArrayView(text));
            g_free(text);
        }
    }
    return hash.result();
}

std::vector<ComponentGroup> groupByIdentifier(std::vector<EventComponent> components)
{
    std::vector<ComponentGroup> groups;
    std::map<std::string, std::size_t, std::less<>> indices;
    for (EventComponent &event : components) {
        if (i_cal_component_isa(event.component.get()) != I_CAL_VEVENT_COMPONENT) {
            continue;
        }
        repairComponent(event.component.get());
        const char *uid = i_cal_component_get_uid(event.component.get());
        if (uid == nullptr || *uid == '\0') {
            groups.push_back({{std::move(event)}});
            continue;
        }
        const auto [place, isNew] = indices.try_emplace(uid, groups.size());
        if (isNew) {
            groups.emplace_back();
        }
        groups[place->second].components.push_back(std::move(event));
    }
    return groups;
}

std::vector<ComponentGroup> takeGroups(std::vector<ComponentGroup> &groups,
                                       const std::set<IdentifierKey> &identifiers)
{
    std::vector<ComponentGroup> taken;
    const auto isTaken = [&identifiers](const ComponentGroup &group) { return group.isAmong(identifiers); };
    std::ranges::copy_if(groups, std::back_inserter(taken), isTaken);
    std::erase_if(groups, isTaken);
    return taken;
}

std::set<QByteArray> timeZoneIdentifiers(ICalComponent *component)
{
    std::set<QByteArray> identifiers;
    i_cal_component_foreach_tzid(
        component,
        [](ICalParameter *parameter, gpointer data) {
            const char *tzid = i_cal_parameter_get_tzid(parameter);
            if (tzid != nullptr && *tzid != '\0') {
                static_cast<std::set<QByteArray> *>(data)->insert(QByteArray(tzid));
            }
        },
        &identifiers);
    return identifiers;
}

} // namespace corvane
