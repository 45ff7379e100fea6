// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/EventExpansion.h"

#include "Corvane/Platform/Linux/EvolutionData/CalendarText.h"

#include <QCryptographicHash>
#include <QFile>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <map>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

using Components = std::vector<GObjectRef<ICalComponent>>;

Components children(ICalComponent *parent, ICalComponentKind kind)
{
    Components found;
    for (ICalComponent *child = i_cal_component_get_first_component(parent, kind); child != nullptr;
         child = i_cal_component_get_next_component(parent, kind)) {
        found.push_back(GObjectRef<ICalComponent>::adopt(child));
    }
    return found;
}

CalendarContents contentsOf(ICalComponent *calendar)
{
    return {children(calendar, I_CAL_VEVENT_COMPONENT), children(calendar, I_CAL_VTIMEZONE_COMPONENT),
            i_cal_component_get_method(calendar) == I_CAL_METHOD_CANCEL};
}

QByteArray keyOf(const Components &zones)
{
    QCryptographicHash hash(QCryptographicHash::Md5);
    for (const auto &zone : zones) {
        char *text = i_cal_component_as_ical_string(zone.get());
        hash.addData(QByteArrayView(text));
        g_free(text);
    }
    return hash.result();
}

/// The zones that a calendar defines, made when they are asked for.
class DefinedZones {
public:
    explicit DefinedZones(const Components &definitions) : m_definitions(definitions) {}

    ICalTimezone *find(const char *tzid)
    {
        const auto [place, isNew] = m_zones.try_emplace(tzid);
        if (!isNew) {
            return place->second.get();
        }
        for (const auto &definition : m_definitions) {
            auto zone = GObjectRef<ICalTimezone>::adopt(i_cal_timezone_new());
            ICalComponent *copy = i_cal_component_clone(definition.get());
            const bool isTaken = i_cal_timezone_set_component(zone.get(), copy) != FALSE;
            g_object_unref(copy);
            if (isTaken && qstrcmp(i_cal_timezone_get_tzid(zone.get()), tzid) == 0) {
                place->second = std::move(zone);
                break;
            }
        }
        return place->second.get();
    }

private:
    const Components &m_definitions;
    std::map<QByteArray, GObjectRef<ICalTimezone>> m_zones;
};

} // namespace

std::expected<std::vector<CalendarContents>, CalendarTextError> readCalendarText(const QByteArray &bytes)
{
    auto text = toCalendarText(bytes);
    if (!text) {
        return std::unexpected(text.error());
    }
    const auto root = GObjectRef<ICalComponent>::adopt(i_cal_parser_parse_string(text->constData()));
    *text = QByteArray();
    std::vector<CalendarContents> calendars;
    if (root && i_cal_component_isa(root.get()) == I_CAL_VCALENDAR_COMPONENT) {
        calendars.push_back(contentsOf(root.get()));
    } else if (root && i_cal_component_isa(root.get()) == I_CAL_XROOT_COMPONENT) {
        std::ranges::transform(children(root.get(), I_CAL_VCALENDAR_COMPONENT), std::back_inserter(calendars),
                               [](const auto &calendar) { return contentsOf(calendar.get()); });
    }
    if (calendars.empty()) {
        return std::unexpected(CalendarTextError{false, u"it holds no calendar"_s});
    }
    return calendars;
}

std::expected<QByteArray, QString> readCalendarFile(const QByteArray &path, qint64 maximumSize)
{
    const int descriptor = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return std::unexpected(QString::fromLocal8Bit(std::strerror(errno)));
    }
    QFile file;
    if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return std::unexpected(file.errorString());
    }
    QByteArray text = file.read(maximumSize + 1);
    if (text.isEmpty() && file.error() != QFileDevice::NoError) {
        return std::unexpected(file.errorString());
    }
    if (text.size() > maximumSize) {
        return std::unexpected(u"it is too large"_s);
    }
    return text;
}

Expansion expandCalendars(const std::vector<CalendarContents> &calendars, ExpansionRequest request,
                          ExpansionControl &control)
{
    Expansion whole;
    for (const CalendarContents &calendar : calendars) {
        DefinedZones zones(calendar.zones);
        request.zoneKey = keyOf(calendar.zones);
        request.customZone = [&zones](const char *tzid) { return zones.find(tzid); };
        Expansion expansion = expandGroups(groupByIdentifier(calendar.events), request, control);
        std::ranges::move(expansion.events, std::back_inserter(whole.events));
        std::ranges::move(expansion.skippedEvents, std::back_inserter(whole.skippedEvents));
        whole.series.merge(expansion.series);
        whole.occurring.merge(expansion.occurring);
        whole.isComplete = whole.isComplete && expansion.isComplete;
    }
    return whole;
}

} // namespace corvane
