// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/ComponentGroups.h"

#include "Corvane/Platform/Linux/EvolutionData/CalendarBytes.h"

#include <QByteArray>
#include <QString>

#include <expected>
#include <vector>

namespace corvane {

/// What one calendar of a text contains. Its components belong to one thread at a time, and all components of
/// a text to the same thread.
struct CalendarContents {
    /// With the zones that the calendar defines.
    std::vector<EventComponent> events;
};

/// The calendars of a text, in its order; at least one. Slow: for a worker thread.
[[nodiscard]] std::expected<std::vector<CalendarContents>, CalendarTextError>
readCalendarText(const QByteArray &bytes);

/// The groups of the events of several calendars, possibly from several files: the revisions of an event may
/// be in different ones, as may a series and its changed instances.
[[nodiscard]] std::vector<ComponentGroup> groupsOf(std::vector<CalendarContents> calendars);

} // namespace corvane
