// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/CalendarEvent.h"
#include "Corvane/Calendar/CalendarMonitor.h"
#include "Corvane/Calendar/EventStore.h"
#include "Corvane/Platform/Linux/EvolutionData/CalendarQuestion.h"
#include "Corvane/Utilities/Failure.h"

#include <qcoro/qcorotask.h>

#include <QDeadlineTimer>
#include <QString>

#include <expected>
#include <vector>

namespace corvane {

/// The answer of a source of calendars.
struct CalendarAnswers {
    /// Whether the source exists at all: a calendar service on the bus, a folder on the disk.
    bool isThere = false;
    std::vector<CalendarEvent> events;
    /// How many calendars answered, or have a last good answer that is used instead.
    int answered = 0;
    /// How many others leave a gap in the schedule.
    int silent = 0;
    /// Why the last silent one was silent.
    QString error;
    std::vector<CalendarStatus> calendars;
};

/// A place where calendars are found: the calendar service, or folders of files. Main thread only; calls
/// never block, and end soon after their deadline, whatever hangs.
class CalendarSource {
public:
    virtual ~CalendarSource() = default;

    /// Whether the source is there. Fails if that is unknown, or if the source is there but none of its
    /// calendars can be opened and none is remembered.
    virtual QCoro::Task<std::expected<bool, Failure>> checkAvailability(QDeadlineTimer deadline) = 0;

    /// Every event that overlaps the question's interval. One query runs at a time.
    virtual QCoro::Task<CalendarAnswers> query(CalendarQuestion question, QDeadlineTimer deadline) = 0;

    /// The next query that begins asks every calendar, also those whose last answer is still right.
    virtual void askAnew() {}

    /// Asks servers for news. Returns at once.
    virtual void refresh(CalendarRefresh) {}

    /// Cancels calls in progress: they end on the next turns of the event loop.
    virtual void close() = 0;
};

} // namespace corvane
