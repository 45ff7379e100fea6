// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/ComponentFilter.h"

#include "Corvane/Platform/Linux/EvolutionData/CalendarRepairs.h"
#include "Corvane/Platform/Linux/EvolutionData/ExpansionBudget.h"

#include <QByteArrayList>

namespace corvane {

namespace {

bool isOfUse(const QByteArray &property)
{
    static const QByteArrayList names{"UID",
                                      "SEQUENCE",
                                      "DTSTAMP",
                                      "STATUS",
                                      "SUMMARY",
                                      "LOCATION",
                                      "DESCRIPTION",
                                      "URL",
                                      "CONFERENCE",
                                      "X-GOOGLE-CONFERENCE",
                                      "X-MICROSOFT-SKYPETEAMSMEETINGURL",
                                      "X-LIC-ERROR"};
    return tellsTime(property) || names.contains(property);
}

} // namespace

bool ComponentFilter::wants(const QByteArray &line)
{
    m_isEventClosed = false;
    const QByteArray property = propertyName(line);
    if (property == "BEGIN") {
        return begin(line.mid(6).trimmed().toUpper());
    }
    if (property == "END") {
        return end(line.mid(4).trimmed().toUpper());
    }
    return m_passedOver.isEmpty() && (m_place != Place::event || wantsProperty(property, line));
}

bool ComponentFilter::begin(const QByteArray &name)
{
    if (name == "VEVENT" || name == "VTIMEZONE" || name == "VCALENDAR") {
        m_isEventClosed = m_place == Place::event;
        m_place = name == "VEVENT" ? Place::event : name == "VTIMEZONE" ? Place::zone : Place::outside;
        m_passedOver.clear();
        m_dates = 0;
        m_rules = 0;
        return true;
    }
    if (m_place == Place::zone) {
        return true;
    }
    if (m_passedOver.isEmpty()) {
        m_passedOver = name;
    }
    return false;
}

bool ComponentFilter::end(const QByteArray &name)
{
    if (name == "VEVENT" || name == "VTIMEZONE") {
        const bool isOpen = m_place == (name == "VEVENT" ? Place::event : Place::zone);
        m_place = isOpen ? Place::outside : m_place;
        m_passedOver.clear();
        return isOpen;
    }
    if (name == "VCALENDAR") {
        m_isEventClosed = m_place == Place::event;
        m_place = Place::outside;
        m_passedOver.clear();
        return true;
    }
    if (name == m_passedOver) {
        m_passedOver.clear();
        return false;
    }
    return m_place == Place::zone;
}

/// One rule and one date more than an event's budget are enough to detect that it is exceeded.
bool ComponentFilter::wantsProperty(const QByteArray &name, const QByteArray &line)
{
    constexpr ExpansionBudget budget;
    if (name == "RRULE" || name == "EXRULE") {
        return ++m_rules <= budget.rulesOfEvent + 1;
    }
    if (name == "RDATE" || name == "EXDATE") {
        const bool isWanted = m_dates <= budget.datesOfEvent;
        m_dates += line.count(',') + 1;
        return isWanted;
    }
    return isOfUse(name);
}

} // namespace corvane
