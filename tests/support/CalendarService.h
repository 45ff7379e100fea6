// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/PrivateBus.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QString>

namespace corvane {

/// The desktop's calendar service on a private bus; it uses the test's base directories (see
/// tests/support/isolated). The constructor makes this bus the session bus of the test program, so a program
/// can have only one. Ends the test program if the service does not come up.
class CalendarService {
public:
    CalendarService();
    ~CalendarService();
    CalendarService(const CalendarService &) = delete;
    CalendarService &operator=(const CalendarService &) = delete;

    /// Writes the service's built-in calendar, "Personal". Call it before the first request to the service.
    static void writeCalendar(const QByteArray &ics);

    /// Adds or replaces the calendar `id`, stored in its own file. A running service picks it up with a short
    /// delay.
    static void addCalendar(const QString &id, const QString &displayName, const QByteArray &ics,
                            bool isEnabled = true);
    /// Adds a calendar of any kind; `description` is the content of its source file.
    static void addSource(const QString &id, const QString &description);
    static void removeCalendar(const QString &id);

    enum class Part { registry, factory };

    /// Returns the process id of a part of the service, which is started if necessary.
    [[nodiscard]] qint64 process(Part part);
    /// Sends `signal` to that process and its descendants. The destructor resumes stopped ones. Ends the test
    /// program if the part does not run.
    void signal(Part part, int signal);
    /// Kills that process and returns when the bus knows. A call that is under way may start the part again
    /// at once.
    void kill(Part part);
    [[nodiscard]] bool isRunning(Part part) const;

private:
    PrivateBus m_bus;
    QDBusConnection m_connection;
};

/// Wraps the text of components into a calendar file, with the CRLF line ends that the format requires.
[[nodiscard]] QByteArray calendarText(const QByteArray &components);

} // namespace corvane
