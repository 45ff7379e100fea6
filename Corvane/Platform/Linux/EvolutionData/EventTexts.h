// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <libecal/libecal.h>

#include "Corvane/Calendar/CalendarEvent.h"

#include <QString>

namespace corvane {

/// The texts and the link of a component; the times are not set. Long texts are cut. If the component has no
/// link, a link to a meeting counts.
[[nodiscard]] CalendarEvent eventTexts(ICalComponent *event);

/// The length of an event's title, location and notes together, in UTF-16 units.
[[nodiscard]] qsizetype textLength(const CalendarEvent &event);

/// `text` for a log line: at most 80 characters (and an ellipsis), in one line, without double quotation
/// marks.
[[nodiscard]] QString logText(const QString &text);

} // namespace corvane
