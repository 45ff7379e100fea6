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

/// The day of the tests' events, 14 May 2025 in UTC, or the day `daysLater` days after it.
[[nodiscard]] DateInterval testDay(int daysLater = 0);

/// A half-hour event on testDay() at `hour` UTC, with the additional lines `more`. Its identifier is the
/// title with dashes for blanks, cut to 50 bytes.
[[nodiscard]] QByteArray lesson(const QByteArray &title, const QByteArray &more = {},
                                const QByteArray &hour = "12");

/// The titles of `events`, or "failed: " and the reason.
[[nodiscard]] QStringList titles(const std::expected<std::vector<CalendarEvent>, Failure> &events);

/// A calendar store and its files for one test: a folder of calendar files, a memory folder and a log. The
/// destructor waits until the store's pending writes have ended, for at most five seconds.
class CalendarRoom {
public:
    CalendarRoom();
    ~CalendarRoom();
    CalendarRoom(const CalendarRoom &) = delete;
    CalendarRoom &operator=(const CalendarRoom &) = delete;

    /// (Re)starts the store with calendar folders only: `folders`, or calendarFolder() if empty.
    void startOnFolders(const QStringList &folders = {});
    /// (Re)starts the store with calendarFolder() and the calendar service.
    void startOnAll();
    void stop();

    [[nodiscard]] EventStore &store() { return *m_store; }
    [[nodiscard]] CalendarMonitor &monitor() { return m_store->monitor(); }

    /// Loads a day as the lesson store does, requesting access first if necessary. Returns the titles of the
    /// day's events, or "failed: " and the reason.
    [[nodiscard]] QStringList load(int daysLater = 0);
    [[nodiscard]] static QCoro::Task<std::expected<std::vector<CalendarEvent>, Failure>>
    load(EventStore &store, DateInterval day);

    /// Sets the user's time zone.
    void setTimeZone(const QByteArray &timeZoneId) { m_timeZoneId = timeZoneId; }

    [[nodiscard]] QString calendarFolder() const;
    [[nodiscard]] QString path(const QString &name) const;
    void write(const QString &name, const QByteArray &text) const;
    /// Writes a calendar file with these components.
    void writeEvents(const QString &name, const QByteArray &components) const;

    [[nodiscard]] QString memoryFolder() const;
    [[nodiscard]] QStringList memoryFiles() const;

    [[nodiscard]] QStringList logLines() const { return m_log.latestLines(); }
    /// The number of log lines that contain `part`.
    [[nodiscard]] qsizetype logged(const QString &part) const;

private:
    QTemporaryDir m_folder;
    DebugLogService m_log{m_folder.filePath(QStringLiteral("log"))};
    QByteArray m_timeZoneId = "UTC";
    std::unique_ptr<EventStore> m_store;
    std::weak_ptr<CalendarServices> m_services;
};

} // namespace corvane
