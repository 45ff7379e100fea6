// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/GObjectRef.h"

#include <libecal/libecal.h>

#include "Corvane/Platform/Linux/EvolutionData/CalendarIdentifiers.h"
#include "Corvane/Platform/Linux/EvolutionData/ZoneTable.h"

#include <QByteArray>

#include <memory>
#include <set>
#include <vector>

namespace corvane {

/// A component of an event, and the zones that its calendar defines (never null).
struct EventComponent {
    GObjectRef<ICalComponent> component;
    std::shared_ptr<DefinedZones> zones;
};

/// The components with one identifier: an event, or a series and its changed instances.
struct ComponentGroup {
    std::vector<EventComponent> components;

    /// Whether it may occur more than once.
    [[nodiscard]] bool isSeries() const;

    /// Whether its identifier is one of `identifiers`.
    [[nodiscard]] bool isAmong(const std::set<IdentifierKey> &identifiers) const;

    /// Changes with everything that the occurrences depend on.
    [[nodiscard]] QByteArray key() const;
};

/// Groups components by identifier, after repairing them; events only. A component without an identifier is a
/// separate group.
[[nodiscard]] std::vector<ComponentGroup> groupByIdentifier(std::vector<EventComponent> components);

/// Moves the groups with these identifiers out of `groups`.
[[nodiscard]] std::vector<ComponentGroup> takeGroups(std::vector<ComponentGroup> &groups,
                                                     const std::set<IdentifierKey> &identifiers);

/// The identifiers of the time zones that `component` names.
[[nodiscard]] std::set<QByteArray> timeZoneIdentifiers(ICalComponent *component);

} // namespace corvane
