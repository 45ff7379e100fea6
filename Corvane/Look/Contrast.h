// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QList>

/// Colour arithmetic: pure functions.
namespace corvane::look {

/// The least contrast of texts and of symbols with their background, as a ratio of luminances (WCAG 2).
inline constexpr double textContrast = 4.5;
inline constexpr double symbolContrast = 3;

/// The contrast ratio of two opaque colours: 1 for the same, 21 for black on white.
[[nodiscard]] double contrast(const QColor &one, const QColor &other);

/// `share` (0 to 1) of `one` mixed with `other`; opaque.
[[nodiscard]] QColor mixed(const QColor &one, const QColor &other, double share);

/// The opaque colour that results where `color`, which may be translucent, lies on the opaque `ground`.
[[nodiscard]] QColor over(const QColor &color, const QColor &ground);

/// `color`, lightened or darkened in its own hue just enough to reach the contrast `ratio` with each of
/// `grounds`; white or black where even these do not reach it.
[[nodiscard]] QColor legible(const QColor &color, const QList<QColor> &grounds, double ratio);

} // namespace corvane::look
