// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/ZoneTable.h"

#include "Corvane/Platform/Linux/EvolutionData/EventRules.h"

#include <QCryptographicHash>
#include <QTimeZone>

#include <algorithm>
#include <optional>

namespace corvane {

namespace {

/// No zone has a longer name. In bytes.
constexpr qsizetype longestName = 200;
/// No zone has changed its clocks more often, neither by distinct rules nor on single dates.
constexpr int maximumChanges = 500;
/// Several programs begin their rules in 1601.
constexpr int firstYear = 1600;
constexpr int lastYear = 2200;

ICalTimezone *systemZone(const QByteArray &name)
{
    // The library opens a file of this name.
    if (name.isEmpty() || name.contains("..")) {
        return nullptr;
    }
    return i_cal_timezone_get_builtin_timezone(name.constData());
}

/// The zone named by the last parts of a path such as "/vendor/20250101/Europe/Berlin".
ICalTimezone *prefixedZone(const QByteArray &tzid)
{
    for (qsizetype slash = tzid.indexOf('/'); slash >= 0; slash = tzid.indexOf('/', slash + 1)) {
        if (ICalTimezone *zone = systemZone(tzid.sliced(slash + 1))) {
            return zone;
        }
    }
    return nullptr;
}

ICalTimezone *wellKnownZone(const QByteArray &tzid)
{
    if (ICalTimezone *zone = systemZone(tzid)) {
        return zone;
    }
    if (ICalTimezone *zone = i_cal_timezone_get_builtin_timezone_from_tzid(tzid.constData())) {
        return zone;
    }
    return prefixedZone(tzid);
}

bool isHarmlessChange(ICalComponent *change)
{
    const int year = startYear(change).value_or(0);
    if (year < firstYear || year > lastYear ||
        i_cal_component_count_properties(change, I_CAL_RDATE_PROPERTY) > maximumChanges) {
        return false;
    }
    const auto rules = rulesOf(change);
    // A second rule would be walked for each occurrence of the first.
    return rules.size() <= 1 && std::ranges::all_of(rules, [](const RecurrenceRule &rule) {
               const bool isTimeless = rule.hours.empty() && rule.minutes.empty() && rule.seconds.empty();
               // Excludes days that never come, such as 30 February.
               const bool comesTrue =
                   rule.monthDays.empty() || std::ranges::any_of(rule.monthDays, [](short number) {
                       return number >= -28 && number <= 28 && number != 0;
                   });
               return rule.frequency == RuleFrequency::yearly && isTimeless && comesTrue &&
                      rule.weeks.empty() && rule.yearDays.empty();
           });
}

} // namespace

bool isHarmlessZone(ICalComponent *definition)
{
    int changes = 0;
    for (const ICalComponentKind kind : {I_CAL_XSTANDARD_COMPONENT, I_CAL_XDAYLIGHT_COMPONENT}) {
        for (const auto &change : children(definition, kind)) {
            if (++changes > maximumChanges || !isHarmlessChange(change.get())) {
                return false;
            }
        }
    }
    return changes > 0;
}

DefinedZones::DefinedZones(std::vector<GObjectRef<ICalComponent>> definitions)
    : m_definitions(std::move(definitions))
{
    QCryptographicHash hash(QCryptographicHash::Md5);
    for (const auto &definition : m_definitions) {
        char *text = i_cal_component_as_ical_string(definition.get());
        hash.addData(QByteArrayView(text));
        g_free(text);
    }
    m_key = hash.result();
}

ICalTimezone *DefinedZones::find(const QByteArray &tzid)
{
    const auto [place, isNew] = m_zones.try_emplace(tzid);
    if (!isNew) {
        return place->second.get();
    }
    for (const auto &definition : m_definitions) {
        const auto name = GObjectRef<ICalProperty>::adopt(
            i_cal_component_get_first_property(definition.get(), I_CAL_TZID_PROPERTY));
        if (!name || tzid != i_cal_property_get_tzid(name.get()) || !isHarmlessZone(definition.get())) {
            continue;
        }
        auto zone = GObjectRef<ICalTimezone>::adopt(i_cal_timezone_new());
        const auto copy = GObjectRef<ICalComponent>::adopt(i_cal_component_clone(definition.get()));
        if (i_cal_timezone_set_component(zone.get(), copy.get()) != FALSE) {
            place->second = std::move(zone);
            break;
        }
    }
    return place->second.get();
}

ZoneTable::ZoneTable(const QByteArray &timeZoneId)
    : m_own(i_cal_timezone_get_builtin_timezone(timeZoneId.constData()))
{
    if (m_own == nullptr) {
        m_own = i_cal_timezone_get_utc_timezone();
    }
}

ICalTimezone *ZoneTable::find(const char *tzid, DefinedZones &definitions)
{
    if (tzid == nullptr || *tzid == '\0') {
        return m_own;
    }
    const QByteArray name(tzid, static_cast<qsizetype>(qstrnlen(tzid, longestName)));
    const auto [place, isNew] = m_known.try_emplace({&definitions, name});
    if (isNew) {
        place->second = look(name, definitions);
    }
    return place->second;
}

ICalTimezone *ZoneTable::look(const QByteArray &tzid, DefinedZones &definitions)
{
    if (ICalTimezone *zone = wellKnownZone(tzid)) {
        return zone;
    }
    if (ICalTimezone *zone = definitions.find(tzid)) {
        return zone;
    }
    if (ICalTimezone *zone = systemZone(QTimeZone::windowsIdToDefaultIanaId(tzid))) {
        return zone;
    }
    // The names that other systems give to zones.
    const char *location = e_cal_match_tzid(tzid.constData());
    if (ICalTimezone *zone = location != nullptr ? systemZone(location) : nullptr) {
        return zone;
    }
    m_unknown.insert(tzid);
    return m_own;
}

} // namespace corvane
