// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/CalendarEvent.h"
#include "Corvane/Utilities/Clock.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace corvane {

/// How one calendar fares, as of the last load.
struct CalendarStatus {
    enum class Condition : std::uint8_t {
        unread,         ///< no load has asked it yet
        answers,        ///< the last load read it
        awaitsPassword, ///< its account waits for a password
        silent,         ///< it did not answer in time
        unopened,       ///< it could not be opened, or only half of it is there
        leftOut,        ///< a file that holds no calendar
    };

    QString identifier; ///< unique among all calendars, the same in each run
    QString name;       ///< as the user knows it; from strangers, any length
    QString account;    ///< the account, or the folder of a file
    Condition condition = Condition::unread;
    QString reason;               ///< plain words; empty where it answers
    std::optional<Date> lastRead; ///< when it last answered, in this run or an earlier one
    std::optional<Date> failingSince;
    bool usesLastAnswer = false; ///< its last good answer stands in
    int eventCount = 0;          ///< events that it gave to the last load

    /// Whether its lessons are missing from the schedule.
    [[nodiscard]] bool isGap() const
    {
        return condition != Condition::unread && condition != Condition::answers &&
               condition != Condition::leftOut && !usesLastAnswer;
    }

    friend bool operator==(const CalendarStatus &, const CalendarStatus &) = default;
};

/// Tells what the event store knows of its calendars. Main thread only.
class CalendarMonitor final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Every calendar, by account and name.
    [[nodiscard]] const std::vector<CalendarStatus> &calendars() const { return m_calendars; }

    /// Why events may be missing from the last answer: a calendar is silent, and no earlier answer of its
    /// stands in. Empty where none may be.
    [[nodiscard]] const QString &gap() const { return m_gap; }

    /// The events of the last answer, all-day ones included, by start.
    [[nodiscard]] const std::vector<CalendarEvent> &events() const { return m_events; }

    /// For the event store. They announce a change only where there is one.
    void setCalendars(std::vector<CalendarStatus> calendars, const QString &gap = {});
    void setEvents(std::vector<CalendarEvent> events);

Q_SIGNALS:
    /// calendars(), gap() or events() changed.
    void changed();

    /// A calendar has something that the last load lacks: a late answer, or news from its server. Load again.
    void newsArrived();

private:
    std::vector<CalendarStatus> m_calendars;
    QString m_gap;
    std::vector<CalendarEvent> m_events;
};

} // namespace corvane
