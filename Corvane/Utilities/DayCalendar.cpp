// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/DayCalendar.h"

#include "Corvane/Utilities/DateText.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

QDate localDay(Date date, const QTimeZone &timeZone)
{
    return toDateTime(date).toTimeZone(timeZone).date();
}

/// If the clocks go back across midnight, a day has two midnights; it begins at the first.
QDateTime startOf(QDate day, const QTimeZone &timeZone)
{
    QDateTime start = day.startOfDay(timeZone);
    if (!start.isValid() || start.addSecs(-1).date() != day) {
        return start;
    }
    const int putBack = timeZone.offsetFromUtc(start.addSecs(-1)) - timeZone.offsetFromUtc(start);
    return start.addSecs(-putBack);
}

/// The zone that a path like "/usr/share/zoneinfo/Europe/Berlin" refers to; empty if unknown.
QByteArray zoneAt(const QString &path)
{
    for (const QString &name : {path, QFileInfo(path).canonicalFilePath()}) {
        const QString folder = u"/zoneinfo/"_s;
        const qsizetype place = name.lastIndexOf(folder);
        const QByteArray id = place < 0 ? QByteArray() : name.sliced(place + folder.size()).toUtf8();
        if (!id.isEmpty() && QTimeZone(id).isValid()) {
            return id;
        }
    }
    return {};
}

} // namespace

QByteArray systemTimeZoneId()
{
    QByteArray id = QTimeZone::systemTimeZoneId();
    if (!id.startsWith('/')) {
        return id;
    }
    const QByteArray named = zoneAt(QFile::decodeName(id));
    return named.isEmpty() ? id : named;
}

DayCalendar DayCalendar::current()
{
    const QTimeZone timeZone(systemTimeZoneId());
    // With an unknown zone, no day would have bounds.
    return DayCalendar(timeZone.isValid() ? timeZone : QTimeZone::utc());
}

Date DayCalendar::startOfDay(Date date) const
{
    return dayInterval(date).start;
}

DateInterval DayCalendar::dayInterval(Date date) const
{
    const QDate day = localDay(date, m_timeZone);
    const Date start = fromDateTime(startOf(day, m_timeZone));
    const QDateTime next = startOf(day.addDays(1), m_timeZone);
    // If the zone cannot provide the next day's start, assume a day of the usual length.
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
