// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/CalendarText.h"

#include <QByteArray>

#include <set>

namespace corvane {

/// `calendar` as calendar text, without the events whose identifiers are not in `identifiers`. Slow: for a
/// worker thread.
[[nodiscard]] QByteArray captureCalendar(const CalendarContents &calendar,
                                         const std::set<QByteArray> &identifiers);

/// The text of a whole calendar around that of its components.
[[nodiscard]] QByteArray wrapCalendar(const QByteArray &components, bool isCancellation = false);

/// The text of `component` by itself.
[[nodiscard]] QByteArray componentText(ICalComponent *component);

} // namespace corvane
