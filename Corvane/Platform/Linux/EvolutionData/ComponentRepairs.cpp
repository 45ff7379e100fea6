// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/ComponentRepairs.h"

#include "Corvane/Platform/Linux/EvolutionData/CalendarRepairs.h"
#include "Corvane/Platform/Linux/EvolutionData/EventRules.h"

#include <algorithm>
#include <iterator>
#include <optional>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// A component with more errors is not repaired.
constexpr int maximumErrors = 20;

/// A property that the library could not read and has dropped.
struct LostProperty {
    QByteArray name;
    QByteArray value;
};

/// The library replaces such a property by a note that ends with its value.
std::optional<LostProperty> lostProperty(ICalProperty *note)
{
    const char *text = i_cal_property_get_xlicerror(note);
    const QByteArray message(text != nullptr ? text : "");
    constexpr QByteArrayView before = " value in ";
    constexpr QByteArrayView after = " property. Removing entire property: ";
    const qsizetype name = message.indexOf(before);
    const qsizetype end = message.indexOf(after, name);
    if (name < 0 || end < 0) {
        return std::nullopt;
    }
    return LostProperty{message.sliced(name + before.size(), end - name - before.size()),
                        message.sliced(end + after.size())};
}

/// The zone that the event's other times name: that of a lost time is lost, too.
QByteArray zoneOfOthers(ICalComponent *event)
{
    for (const ICalPropertyKind kind : {I_CAL_DTSTART_PROPERTY, I_CAL_DTEND_PROPERTY}) {
        const auto property =
            GObjectRef<ICalProperty>::adopt(i_cal_component_get_first_property(event, kind));
        const auto zone = property ? GObjectRef<ICalParameter>::adopt(i_cal_property_get_first_parameter(
                                         property.get(), I_CAL_TZID_PARAMETER))
                                   : GObjectRef<ICalParameter>();
        if (zone) {
            return i_cal_parameter_get_tzid(zone.get());
        }
    }
    return {};
}

bool add(ICalComponent *event, const QByteArray &line)
{
    const auto property = GObjectRef<ICalProperty>::adopt(i_cal_property_new_from_string(line.constData()));
    if (!property || i_cal_property_isa(property.get()) == I_CAL_XLICERROR_PROPERTY) {
        return false;
    }
    i_cal_component_add_property(event, property.get());
    return true;
}

/// Restores what the library has dropped.
void restore(ICalComponent *event)
{
    const auto notes = properties(event, I_CAL_XLICERROR_PROPERTY);
    if (notes.empty() || std::ssize(notes) > maximumErrors) {
        return;
    }
    const QByteArray zone = zoneOfOthers(event);
    for (const auto &note : notes) {
        const auto lost = lostProperty(note.get());
        if (!lost || !tellsTime(lost->name)) {
            continue;
        }
        const bool isRule = lost->name == "RRULE" || lost->name == "EXRULE";
        if (isRule && lost->value.endsWith(';')) {
            // The library has cut it after a part that it does not know: its count or end may be missing.
            continue;
        }
        const QByteArray value = isRule ? repairedRule(lost->value) : repairedTime(lost->value);
        QByteArray name = lost->name;
        if (!isRule && !zone.isEmpty() && !value.endsWith('Z') && value.contains('T')) {
            name += ";TZID=\"" + zone + '"';
        }
        if (value != lost->value && add(event, name + ':' + value)) {
            i_cal_component_remove_property(event, note.get());
        }
    }
}

/// Repairs rules that the library reads but finds no occurrences for.
void repairRules(ICalComponent *event, ICalPropertyKind kind, const QByteArray &name)
{
    for (const auto &property : properties(event, kind)) {
        char *text = i_cal_property_get_value_as_string(property.get());
        const QByteArray value(text);
        g_free(text);
        const QByteArray repaired = repairedRule(value);
        if (repaired != value && add(event, name + ':' + repaired)) {
            i_cal_component_remove_property(event, property.get());
        }
    }
}

} // namespace

void repairComponent(ICalComponent *event)
{
    restore(event);
    repairRules(event, I_CAL_RRULE_PROPERTY, "RRULE");
    repairRules(event, I_CAL_EXRULE_PROPERTY, "EXRULE");
    if (has(event, I_CAL_DTEND_PROPERTY)) {
        // Some programs write an empty duration beside the end, and the library would use that.
        for (const auto &duration : properties(event, I_CAL_DURATION_PROPERTY)) {
            i_cal_component_remove_property(event, duration.get());
        }
    }
}

bool hasLostRule(ICalComponent *event)
{
    const int notes = i_cal_component_count_properties(event, I_CAL_XLICERROR_PROPERTY);
    if (notes == 0 || notes > maximumErrors) {
        return false;
    }
    return std::ranges::any_of(properties(event, I_CAL_XLICERROR_PROPERTY), [](const auto &note) {
        const auto lost = lostProperty(note.get());
        return lost && (lost->name == "RRULE" || lost->name == "RDATE");
    });
}

QString unreadablePart(ICalComponent *event)
{
    for (const auto &note : properties(event, I_CAL_XLICERROR_PROPERTY)) {
        const auto lost = lostProperty(note.get());
        if (lost && tellsTime(lost->name)) {
            return QString::fromLatin1(lost->name);
        }
    }
    return {};
}

} // namespace corvane
