// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/adapters/CalendarRoom.h"
#include "tests/support/CalendarService.h"

#include <QTest>

#include <csignal>
#include <memory>

namespace corvane {

/// The complete store over a real calendar service with two calendars.
class CalendarServiceFixture : public QObject {
    Q_OBJECT

protected:
    // Milliseconds. A load's two steps together give up after 4.5 s; the rest is for a busy machine.
    static constexpr int limit = 8000;

    [[nodiscard]] QStringList load(int daysLater = 0) { return m_room->load(daysLater); }
    [[nodiscard]] auto beginLoad() { return CalendarRoom::load(m_room->store(), testDay()); }
    /// Makes the next load ask the service even if nothing has changed.
    void wishForNews() { m_room->store().refresh(CalendarRefresh::wished); }
    [[nodiscard]] qsizetype logged(const QString &part) const { return m_room->logged(part); }

    std::unique_ptr<CalendarRoom> m_room;
    std::unique_ptr<CalendarService> m_service;

private Q_SLOTS:
    void initTestCase()
    {
        CalendarService::writeCalendar(
            calendarText(lesson("Zoom - Anna") + lesson("Zoom - Ben", "RRULE:FREQ=WEEKLY\n")));
        CalendarService::addCalendar(QStringLiteral("second"), QStringLiteral("Lessons"),
                                     calendarText(lesson("Zoom - Cleo")));
        CalendarService::addCalendar(QStringLiteral("disabled"), QStringLiteral("Off"),
                                     calendarText(lesson("Zoom - Never")), false);
        m_service = std::make_unique<CalendarService>();
    }

    void cleanupTestCase() { m_service.reset(); }

    void init()
    {
        m_room = std::make_unique<CalendarRoom>();
        m_room->startOnAll();
    }

    void cleanup()
    {
        m_room->stop();
        for (const auto part : {CalendarService::Part::registry, CalendarService::Part::factory}) {
            if (m_service->isRunning(part)) {
                m_service->signal(part, SIGCONT);
            }
        }
        m_room.reset();
    }
};

} // namespace corvane
