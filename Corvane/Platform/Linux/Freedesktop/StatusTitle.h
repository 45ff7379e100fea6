// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace corvane {

/// Longer titles are cut to this many UTF-16 units.
inline constexpr qsizetype maximumTitleLength = 200;

/// The text in a form that any program can handle: one line, no control characters, well-formed, of bounded
/// length.
[[nodiscard]] QString harmlessTitle(const QString &title);

} // namespace corvane
