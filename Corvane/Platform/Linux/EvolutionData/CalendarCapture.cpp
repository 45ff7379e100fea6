// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/CalendarCapture.h"

namespace corvane {

QByteArray componentText(ICalComponent *component)
{
    char *text = i_cal_component_as_ical_string(component);
    const QByteArray copy(text);
    g_free(text);
    return copy;
}

QByteArray wrapCalendar(const QByteArray &components, bool isCancellation)
{
    return QByteArray("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Quillet//EN\r\n") +
           (isCancellation ? "METHOD:CANCEL\r\n" : "") + components + "END:VCALENDAR\r\n";
}

QByteArray captureCalendar(const CalendarContents &calendar, const std::set<QByteArray> &identifiers)
{
    QByteArray components;
    for (const auto &event : calendar.events) {
        if (identifiers.contains(QByteArray(i_cal_component_get_uid(event.get())))) {
            components += componentText(event.get());
        }
    }
    if (components.isEmpty()) {
        return wrapCalendar({}, calendar.isCancellation);
    }
    QByteArray zones;
    for (const auto &zone : calendar.zones) {
        zones += componentText(zone.get());
    }
    return wrapCalendar(zones + components, calendar.isCancellation);
}

} // namespace corvane
