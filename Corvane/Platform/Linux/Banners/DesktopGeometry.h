// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Geometry.h"

#include <QRectF>

namespace corvane {

/// Between the desktop's rectangles, told from the top with y downwards, and the points with y upwards of the
/// presenter and the ports. Both are logical pixels and share x; the lower edge of the primary screen is y =
/// 0 of the latter, so that a single screen begins at (0, 0).
[[nodiscard]] Rect pointsUp(const QRectF &desktop);
[[nodiscard]] Point pointsUp(const QPointF &desktop);
[[nodiscard]] QRectF desktopRect(const Rect &points);

/// The same where the desktop's y that is 0 upwards is `zeroLine`.
[[nodiscard]] Rect pointsUp(const QRectF &desktop, double zeroLine);
[[nodiscard]] Point pointsUp(const QPointF &desktop, double zeroLine);
[[nodiscard]] QRectF desktopRect(const Rect &points, double zeroLine);

} // namespace corvane
