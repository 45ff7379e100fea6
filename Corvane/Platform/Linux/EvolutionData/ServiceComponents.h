// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/GObjectRef.h"

#include <libecal/libecal.h>

#include "Corvane/Platform/Linux/EvolutionData/ComponentGroups.h"

#include <QByteArray>

#include <functional>
#include <set>
#include <vector>

namespace corvane {

/// Components as the calendar service hands them over.
using Components = std::vector<GObjectRef<ICalComponent>>;

/// Finds a zone that the service defines; null if there is none.
using FindZone = std::function<ICalTimezone *(const char *tzid)>;

/// The identifiers of the time zones that `components` name.
[[nodiscard]] std::set<QByteArray> zonesOf(const Components &components);

[[nodiscard]] std::set<QByteArray> identifiersOf(const Components &components);

/// Removes the components with these identifiers.
void removeComponents(Components &components, const std::set<QByteArray> &identifiers);

/// The events of `components` with the zones that the service defines for them. For a worker thread.
[[nodiscard]] std::vector<ComponentGroup> groupsOf(const Components &components, const FindZone &findZone);

} // namespace corvane
