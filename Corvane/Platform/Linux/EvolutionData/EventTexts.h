// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <libecal/libecal.h>

#include "Corvane/Calendar/CalendarEvent.h"

#include <QString>

namespace corvane {

/// What a component says in words; the times are not set. Long texts are cut. Where it has no link of its
/// own, a link to a meeting counts.
[[nodiscard]] CalendarEvent eventTexts(ICalComponent *event);

/// How many characters the texts of an event have.
[[nodiscard]] qsizetype textLength(const CalendarEvent &event);

/// `text` for a log line: at most 80 characters, in one line, without quotation marks.
[[nodiscard]] QString logText(const QString &text);

} // namespace corvane
