// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <libecal/libecal.h>

#include <QString>

namespace corvane {

/// Brings an event's component into the form that the calendar library reads, where its meaning is plain:
/// what the library gave up when it read the text, and the one of two ends that counts.
void repairComponent(ICalComponent *event);

/// What of a component's times nobody can read, for the log; empty where all is well.
[[nodiscard]] QString unreadablePart(ICalComponent *event);

} // namespace corvane
