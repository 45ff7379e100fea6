// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/DayCalendar.h"

#include "Corvane/Utilities/DateText.h"

namespace corvane {

namespace {

QDate localDay(Date date, const QTimeZone &timeZone)
{
    return toDateTime(date).toTimeZone(timeZone).date();
}

} // namespace

DayCalendar DayCalendar::current()
{
    const QTimeZone timeZone = QTimeZone::systemTimeZone();
    // A zone that is set but unknown would leave every day without bounds.
    return DayCalendar(timeZone.isValid() ? timeZone : QTimeZone::utc());
}

Date DayCalendar::startOfDay(Date date) const
{
    return dayInterval(date).start;
}

DateInterval DayCalendar::dayInterval(Date date) const
{
    const QDate day = localDay(date, m_timeZone);
    const Date start = fromDateTime(day.startOfDay(m_timeZone));
    const QDateTime next = day.addDays(1).startOfDay(m_timeZone);
    // Where the zone cannot tell the next day's start, a day has its usual length.
    return {start, next.isValid() ? fromDateTime(next) : start + Seconds{86400}};
}

bool DayCalendar::isInSameDay(Date left, Date right) const
{
    return localDay(left, m_timeZone) == localDay(right, m_timeZone);
}

QString DayCalendar::timeZoneIdentifier() const
{
    return QString::fromUtf8(m_timeZone.id());
}

} // namespace corvane
