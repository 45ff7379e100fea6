// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/EventStore.h"
#include "Corvane/Utilities/DebugLogService.h"

#include <QStringList>

#include <memory>

namespace corvane {

struct CalendarServices;

/// The folders with calendar files if the user names none: `quillet/calendars` in the user's data folder, and
/// `.calendars` in the home folder.
[[nodiscard]] QStringList defaultCalendarFolders();

/// The folder of the remembered calendars: `quillet/calendars` in the user's state folder.
[[nodiscard]] QString defaultCalendarMemoryFolder();

/// The calendars of this machine, from the calendar service and from `folders`, in one store, which remembers
/// them in `memoryFolder` (absolute paths). `log` is borrowed. Called once, by the composition root, on the
/// main thread.
[[nodiscard]] std::unique_ptr<EventStore>
makeLinuxEventStore(DebugLogService &log, const QStringList &folders, const QString &memoryFolder);

/// The same with given `services`, which live until the last call in progress has ended.
[[nodiscard]] std::unique_ptr<EventStore>
makeLinuxEventStore(const std::shared_ptr<CalendarServices> &services, const QStringList &folders);

/// Whether the event loop of the main thread serves the calendar library. If not, writes that to the log and
/// to standard error: the calendar service will never answer, and loads end at their time limit. Called once
/// at start-up, after the application object was made.
bool checkEventLoopServesCalendars(DebugLogService &log);

} // namespace corvane
