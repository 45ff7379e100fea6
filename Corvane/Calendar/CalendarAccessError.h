// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace corvane {

/// Why the calendar cannot be read although it was asked.
enum class CalendarAccessError { denied };

/// The sentence shown to the user.
[[nodiscard]] QString localizedDescription(CalendarAccessError error);

} // namespace corvane
