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

/// The state of one calendar as of the last load.
struct CalendarStatus {
    enum class Condition : std::uint8_t {
        unread,         ///< not queried by any load yet
        answers,        ///< read by the last load
        awaitsPassword, ///< its account needs a password
        silent,         ///< did not answer in time
        unopened,       ///< the calendar service could not open it
        unreadable,     ///< a file that could not be read, or is incomplete
        leftOut,        ///< a file that contains no calendar
    };

    QString identifier; ///< unique among all calendars, stable across runs
    QString name;       ///< as the user knows it; untrusted, any length
    QString account;    ///< the account, or a file's folder
    Condition condition = Condition::unread;
    QString reason;               ///< for the user; empty if it answers
    std::optional<Date> lastRead; ///< its last answer, in this run or an earlier one
    std::optional<Date> failingSince;
    bool usesLastAnswer = false; ///< its last good answer is used instead
    int eventCount = 0;          ///< events it contributed to the last load

    /// Whether its lessons are missing from the schedule.
    [[nodiscard]] bool isGap() const
    {
        return condition != Condition::unread && condition != Condition::answers &&
               condition != Condition::leftOut && !usesLastAnswer;
    }

    friend bool operator==(const CalendarStatus &, const CalendarStatus &) = default;
};

/// Holds what the event store knows about its calendars. Main thread only.
class CalendarMonitor final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// All calendars, sorted by account and name.
    [[nodiscard]] const std::vector<CalendarStatus> &calendars() const { return m_calendars; }

    /// Why events may be missing from the last answer: a calendar did not answer, and there is no earlier
    /// answer to use instead. Empty if none are missing.
    [[nodiscard]] const QString &gap() const { return m_gap; }

    /// The events of the last answer, all-day events included, sorted by start.
    [[nodiscard]] const std::vector<CalendarEvent> &events() const { return m_events; }

    /// Until `viewer` is destroyed, every load asks each calendar, so that no state is older than the last
    /// load.
    void addViewer(const QObject &viewer);
    [[nodiscard]] bool isViewed() const { return m_viewers > 0; }

    /// Called by the event store. They emit changed() only if something changed.
    void setCalendars(std::vector<CalendarStatus> calendars, const QString &gap = {});
    void setEvents(std::vector<CalendarEvent> events);

Q_SIGNALS:
    /// calendars(), gap() or events() changed.
    void changed();

    /// A calendar has events that the last load lacks: a late answer, or news from its server. Load again.
    void newsArrived();

private:
    std::vector<CalendarStatus> m_calendars;
    QString m_gap;
    std::vector<CalendarEvent> m_events;
    int m_viewers = 0;
};

} // namespace corvane
