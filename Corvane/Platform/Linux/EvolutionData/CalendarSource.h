// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/CalendarEvent.h"
#include "Corvane/Utilities/Clock.h"
#include "Corvane/Utilities/DayCalendar.h"
#include "Corvane/Utilities/DebugLogService.h"
#include "Corvane/Utilities/Failure.h"

#include <qcoro/qcorotask.h>

#include <QByteArray>
#include <QDeadlineTimer>
#include <QPointer>
#include <QString>

#include <expected>
#include <functional>
#include <vector>

namespace corvane {

/// What a source of calendars answers for one interval.
struct CalendarAnswers {
    /// Whether the source exists at all: a calendar service on the bus, a folder on the disk.
    bool isThere = false;
    std::vector<CalendarEvent> events;
    /// How many calendars answered, or have a last good answer for the same interval that stands in.
    int answered = 0;
    /// How many did neither.
    int silent = 0;
    /// Why the last of the silent ones was silent.
    QString error;
};

/// A kind of place where calendars are found: the calendar service, or folders of files. Main thread only;
/// its calls never block, and end soon after their deadline, whatever hangs.
class CalendarSource {
public:
    virtual ~CalendarSource() = default;

    /// Whether the source is there; fails where that cannot be told, or where it is and none of its calendars
    /// can be opened.
    virtual QCoro::Task<std::expected<bool, Failure>> checkAvailability(QDeadlineTimer deadline) = 0;

    /// Every event that overlaps `interval`. One query runs at a time.
    virtual QCoro::Task<CalendarAnswers> query(DateInterval interval, QDeadlineTimer deadline) = 0;

    /// Gives up what is under way: its calls end on the next turns of the event loop.
    virtual void close() = 0;
};

/// Answers the identifier of the user's time zone, for example "Europe/Berlin".
using TimeZoneId = std::function<QByteArray()>;

/// Writes a line to the log that the calendar adapters borrow, while there is one.
class CalendarLog {
public:
    explicit CalendarLog(DebugLogService &service) : m_service(&service) {}
    void operator()(const QString &message) const
    {
        if (m_service != nullptr) {
            m_service->log(message, currentDate());
        }
    }

private:
    QPointer<DebugLogService> m_service;
};

} // namespace corvane
