// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/EventExpansion.h"

#include "Corvane/Platform/Linux/EvolutionData/CalendarBytes.h"
#include "Corvane/Platform/Linux/GObjectRef.h"

#include <QByteArray>
#include <QString>

#include <expected>
#include <vector>

namespace corvane {

/// What one calendar of a text holds. Its components belong to one thread at a time.
struct CalendarContents {
    std::vector<GObjectRef<ICalComponent>> events;
    /// The time zones that the calendar defines for its events.
    std::vector<GObjectRef<ICalComponent>> zones;
    /// It calls its events off.
    bool isCancellation = false;
};

/// The calendars of a text, in its order; at least one. Slow: for a worker thread.
[[nodiscard]] std::expected<std::vector<CalendarContents>, CalendarTextError>
readCalendarText(const QByteArray &bytes);

/// The bytes of a file of `maximumSize` bytes at most. Waits for the disk: for a worker thread.
[[nodiscard]] std::expected<QByteArray, QString> readCalendarFile(const QByteArray &path, qint64 maximumSize);

/// Every occurrence of the events of `calendars` that overlaps the interval: as `expandGroups`, with the
/// zones of the calendars. The custom zones of `request` are not asked.
[[nodiscard]] Expansion expandCalendars(const std::vector<CalendarContents> &calendars,
                                        ExpansionRequest request, ExpansionControl &control);

} // namespace corvane
