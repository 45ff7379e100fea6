// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace corvane {

/// No line on the screen holds more, and measuring a text of a million characters would take too long.
inline constexpr qsizetype longestLine = 1000;

/// `text` for display on one line: runs of line breaks, control characters and white space become one space,
/// bidirectional control characters are removed, and anything beyond `maximumLength` is cut off.
[[nodiscard]] QString oneLine(const QString &text, qsizetype maximumLength = longestLine);

} // namespace corvane
