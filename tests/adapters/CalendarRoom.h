// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/EventStore.h"
#include "Corvane/Utilities/DebugLogService.h"

#include <qcoro/qcorotask.h>

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <expected>
#include <memory>
#include <vector>

namespace corvane {

struct CalendarServices;

/// The day that the tests' calendars are about, 14 May 2025 in UTC, or one of the days around it.
[[nodiscard]] DateInterval testDay(int daysLater = 0);

/// An event of half an hour on that day; `more` are lines of its own. Its title is its identifier.
[[nodiscard]] QByteArray lesson(const QByteArray &title, const QByteArray &more = {},
                                const QByteArray &hour = "12");

/// The titles of `events`, or why there are none.
[[nodiscard]] QStringList titles(const std::expected<std::vector<CalendarEvent>, Failure> &events);

/// What a store of calendars needs of the disk, for one test: a folder of calendar files, a folder for the
/// memory, a log. When it goes, the store has written what it is about to write.
class CalendarRoom {
public:
    CalendarRoom();
    ~CalendarRoom();
    CalendarRoom(const CalendarRoom &) = delete;
    CalendarRoom &operator=(const CalendarRoom &) = delete;

    /// Quillet starts: only the folders are read, those in `folders` or calendarFolder().
    void startOnFolders(const QStringList &folders = {});
    /// Likewise with the calendar service.
    void startOnAll();
    void stop();

    [[nodiscard]] EventStore &store() { return *m_store; }
    [[nodiscard]] CalendarMonitor &monitor() { return m_store->monitor(); }

    /// As the lesson store loads: asks for access where none is decided. The titles of the day's events, or
    /// why there are none.
    [[nodiscard]] QStringList load(int daysLater = 0);
    [[nodiscard]] static QCoro::Task<std::expected<std::vector<CalendarEvent>, Failure>>
    load(EventStore &store, DateInterval day);

    /// Where the user is.
    void setTimeZone(const QByteArray &timeZoneId) { m_timeZoneId = timeZoneId; }

    [[nodiscard]] QString calendarFolder() const;
    [[nodiscard]] QString path(const QString &name) const;
    void write(const QString &name, const QByteArray &text) const;
    /// A file around these components.
    void writeEvents(const QString &name, const QByteArray &components) const;

    [[nodiscard]] QString memoryFolder() const;
    [[nodiscard]] QStringList memoryFiles() const;

    [[nodiscard]] QStringList logLines() const { return m_log.latestLines(); }
    /// How many lines hold `part`.
    [[nodiscard]] qsizetype logged(const QString &part) const;

private:
    QTemporaryDir m_folder;
    DebugLogService m_log{m_folder.filePath(QStringLiteral("log"))};
    QByteArray m_timeZoneId = "UTC";
    std::unique_ptr<EventStore> m_store;
    std::weak_ptr<CalendarServices> m_services;
};

} // namespace corvane
