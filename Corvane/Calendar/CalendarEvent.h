// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"

#include <QString>
#include <QUrl>

#include <optional>

namespace corvane {

/// One occurrence of a calendar event. Its texts are untrusted and of any length.
struct CalendarEvent {
    std::optional<QString> title;
    Date startDate;
    Date endDate;
    bool isAllDay = false;
    std::optional<QString> location;
    std::optional<QString> notes;
    std::optional<QUrl> url;

    friend bool operator==(const CalendarEvent &, const CalendarEvent &) = default;
};

} // namespace corvane
