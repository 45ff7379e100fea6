// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/CalendarText.h"

#include "Corvane/Platform/Linux/EvolutionData/EventRules.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

CalendarContents contentsOf(ICalComponent *calendar)
{
    CalendarContents contents;
    const auto zones = std::make_shared<DefinedZones>(children(calendar, I_CAL_VTIMEZONE_COMPONENT));
    const bool isCancellation = i_cal_component_get_method(calendar) == I_CAL_METHOD_CANCEL;
    for (auto &component : children(calendar, I_CAL_VEVENT_COMPONENT)) {
        if (isCancellation) {
            i_cal_component_set_status(component.get(), I_CAL_STATUS_CANCELLED);
        }
        contents.events.push_back({std::move(component), zones});
    }
    return contents;
}

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

std::vector<ComponentGroup> groupsOf(std::vector<CalendarContents> calendars)
{
    std::vector<EventComponent> events;
    for (CalendarContents &calendar : calendars) {
        std::ranges::move(calendar.events, std::back_inserter(events));
    }
    return groupByIdentifier(std::move(events));
}

} // namespace corvane
