// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/EventStore.h"
#include "Corvane/Utilities/DebugLogService.h"

#include <QStringList>

#include <memory>

namespace corvane {

struct CalendarServices;

/// The folders where calendar files are looked for when the user names none: `quillet/calendars` in the
/// user's data folder, and `.calendars` in the home.
[[nodiscard]] QStringList defaultCalendarFolders();

/// The folder in which calendars are remembered: `quillet/calendars` in the user's state folder.
[[nodiscard]] QString defaultCalendarMemoryFolder();

/// The calendars of this machine: those of the calendar service and those of `folders`, in one store, which
/// remembers them in `memoryFolder` (absolute paths). `log` is borrowed. Called once, by the composition
/// root, on the main thread.
[[nodiscard]] std::unique_ptr<EventStore>
makeLinuxEventStore(DebugLogService &log, const QStringList &folders, const QString &memoryFolder);

/// Likewise; `services` goes when the last that is under way has ended.
[[nodiscard]] std::unique_ptr<EventStore>
makeLinuxEventStore(const std::shared_ptr<CalendarServices> &services, const QStringList &folders);

/// Whether the event loop of the main thread serves the calendar library; where it does not, says so in the
/// log and on the standard error: the calendar service then never answers, and loads end at their time limit.
/// Called once at start-up, after the application object was made.
bool checkEventLoopServesCalendars(DebugLogService &log);

} // namespace corvane
