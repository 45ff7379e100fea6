// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/CalendarMonitor.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace corvane {

void CalendarMonitor::addViewer(const QObject &viewer)
{
    ++m_viewers;
    connect(&viewer, &QObject::destroyed, this, [this] { --m_viewers; });
}

void CalendarMonitor::setCalendars(std::vector<CalendarStatus> calendars, const QString &gap)
{
    std::ranges::sort(calendars, {}, [](const CalendarStatus &calendar) {
        return std::tie(calendar.account, calendar.name, calendar.identifier);
    });
    if (calendars != m_calendars || gap != m_gap) {
        m_calendars = std::move(calendars);
        m_gap = gap;
        Q_EMIT changed();
    }
}

void CalendarMonitor::setEvents(std::vector<CalendarEvent> events)
{
    if (events != m_events) {
        m_events = std::move(events);
        Q_EMIT changed();
    }
}

} // namespace corvane
