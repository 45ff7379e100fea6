// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace corvane {

/// Why the calendar could not be read.
enum class CalendarAccessError { denied };

/// The sentence shown to the user.
[[nodiscard]] QString localizedDescription(CalendarAccessError error);

} // namespace corvane
