// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/CalendarLessonEvent.h"

namespace corvane {

CalendarLessonEvent CalendarLessonEvent::fromEvent(const CalendarEvent &event)
{
    return {.title = event.title.value_or(QString()),
            .startDate = event.startDate,
            .endDate = event.endDate,
            .location = event.location,
            .notes = event.notes,
            .url = event.url};
}

std::optional<CalendarLessonEvent> CalendarLessonEvent::fromTimedEvent(const CalendarEvent &event)
{
    return event.isAllDay ? std::nullopt : std::optional(fromEvent(event));
}

} // namespace corvane
