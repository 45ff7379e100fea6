// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/PrivateBus.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QString>

namespace corvane {

/// The desktop's calendar service on a bus of the test's own, over the base directories of the test's own
/// (see tests/support/isolated). The test program's session bus is this bus from construction on, so there is
/// one in a test program.
class CalendarService {
public:
    CalendarService();
    ~CalendarService();
    CalendarService(const CalendarService &) = delete;
    CalendarService &operator=(const CalendarService &) = delete;

    /// Writes the service's own calendar, "Personal", before the service is first asked.
    static void writeCalendar(const QByteArray &ics);

    /// Adds (or replaces) a calendar of the name `id` over a file of its own. A service that runs takes it up
    /// after some moments.
    static void addCalendar(const QString &id, const QString &displayName, const QByteArray &ics,
                            bool isEnabled = true);
    /// Adds a calendar of any kind by the text that describes it to the service.
    static void addSource(const QString &id, const QString &description);
    static void removeCalendar(const QString &id);

    enum class Part { registry, factory };

    /// The process of a part of the service, started if need be.
    [[nodiscard]] qint64 process(Part part);
    /// Sends `signal` to that process and to those that it has started. Stopped ones go on when this object
    /// goes.
    void signal(Part part, int signal);
    [[nodiscard]] bool isRunning(Part part) const;

private:
    PrivateBus m_bus;
    QDBusConnection m_connection;
};

/// A calendar file around the text of its components, with the line ends that the format asks for.
[[nodiscard]] QByteArray calendarText(const QByteArray &components);

} // namespace corvane
