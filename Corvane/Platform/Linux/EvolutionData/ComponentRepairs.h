// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <libecal/libecal.h>

#include <QString>

namespace corvane {

/// Brings an event's component into the form that the calendar library reads, if its meaning is clear:
/// restores what the library dropped when it read the text, and drops the duration if there is also an end.
void repairComponent(ICalComponent *event);

/// Whether the library has dropped a rule or a list of dates by which an event occurs more than once. False
/// if it has dropped so much that the event is not repaired.
[[nodiscard]] bool hasLostRule(ICalComponent *event);

/// The first time property of a component that is unreadable, for the log; empty if there is none.
[[nodiscard]] QString unreadablePart(ICalComponent *event);

} // namespace corvane
