// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/CalendarText.h"

#include "Corvane/Calendar/CalendarLessonParser.h"
#include "Corvane/Platform/Linux/EvolutionData/EventExpansion.h"
#include "tests/fuzz/FuzzTarget.h"

#include <utility>

using namespace corvane;

namespace {

/// 14 May 2025, UTC.
constexpr double day = 1'747'180'800;

/// A calendar file, from its bytes to the lessons.
void run(const QByteArray &input)
{
    auto calendars = readCalendarText(input);
    if (!calendars) {
        return;
    }
    const ExpansionRequest request{{dateSince1970(day), dateSince1970(day + 86'400)}, "Europe/Berlin"};
    ExpansionControl control;
    const Expansion expansion = expandGroups(groupsOf(std::move(*calendars)), request, control);
    fuzz::require(expansion.events.size() <= request.budget.occurrences, "the budget limits the occurrences");
    std::vector<CalendarLessonEvent> events;
    for (const CalendarEvent &event : expansion.events) {
        fuzz::require(event.startDate < request.interval.end && event.endDate >= request.interval.start,
                      "an occurrence lies in the interval");
        if (const auto timed = CalendarLessonEvent::fromTimedEvent(event)) {
            events.push_back(*timed);
        }
    }
    const CalendarLessonParser parser(PlatformProfile::defaults());
    fuzz::require(parser.lessons(events).size() <= events.size(), "an event gives one lesson at most");
}

QUILLET_FUZZ_TARGET("CalendarFile", run);

} // namespace
