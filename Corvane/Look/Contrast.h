// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QList>

/// Arithmetic of opaque colours: pure functions.
namespace corvane::look {

/// How far texts and symbols have to stand out from their ground, as a ratio of luminances (WCAG 2).
inline constexpr double textContrast = 4.5;
inline constexpr double symbolContrast = 3;

/// How far one colour stands out from the other: 1 for the same, 21 for black on white.
[[nodiscard]] double contrast(const QColor &one, const QColor &other);

/// `share` (0 to 1) of `one`, the rest of `other`.
[[nodiscard]] QColor mixed(const QColor &one, const QColor &other, double share);

/// What is seen where `color`, which may be translucent, lies on `ground`.
[[nodiscard]] QColor over(const QColor &color, const QColor &ground);

/// `color` lightened or darkened, at its own hue, by no more than it takes to stand out from each of
/// `grounds` by `ratio`; as far as it goes where that cannot be reached.
[[nodiscard]] QColor legible(const QColor &color, const QList<QColor> &grounds, double ratio);

} // namespace corvane::look
