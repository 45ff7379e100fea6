// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace corvane {

/// No line of the screen holds more; measuring a text of a million characters would take too long.
inline constexpr qsizetype longestLine = 1000;

/// `text` as it is shown on one line: line breaks and control characters in it are spaces, marks that would
/// turn the direction of what follows are left out, and what is beyond `maximumLength` is cut off.
[[nodiscard]] QString oneLine(const QString &text, qsizetype maximumLength = longestLine);

} // namespace corvane
