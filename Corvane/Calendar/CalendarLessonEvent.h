// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/CalendarEvent.h"
#include "Corvane/Utilities/Clock.h"

#include <QString>
#include <QUrl>

#include <optional>

namespace corvane {

/// One calendar event as the parser sees it.
struct CalendarLessonEvent {
    QString title; ///< empty when the calendar gives none
    Date startDate;
    Date endDate;
    std::optional<QString> location;
    std::optional<QString> notes;
    std::optional<QUrl> url;

    friend bool operator==(const CalendarLessonEvent &, const CalendarLessonEvent &) = default;

    /// The parser's view of an event from the platform's store.
    [[nodiscard]] static CalendarLessonEvent fromEvent(const CalendarEvent &event);

    /// Like fromEvent(), but nothing for an all-day event, which is never a lesson.
    [[nodiscard]] static std::optional<CalendarLessonEvent> fromTimedEvent(const CalendarEvent &event);
};

} // namespace corvane
