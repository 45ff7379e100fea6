// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Geometry.h"

#include <QRectF>

namespace corvane {

/// Converts between desktop coordinates, with y downwards, and the points of the presenter and the ports,
/// with y upwards. Both are logical pixels and share x. Upwards, y is 0 at the lower edge of the primary
/// screen, so that a single screen has its origin at (0, 0).
[[nodiscard]] Rect pointsUp(const QRectF &desktop);
[[nodiscard]] Point pointsUp(const QPointF &desktop);
[[nodiscard]] QRectF desktopRect(const Rect &points);

/// The same, with `zeroLine` as the desktop's y of that edge.
[[nodiscard]] Rect pointsUp(const QRectF &desktop, double zeroLine);
[[nodiscard]] Point pointsUp(const QPointF &desktop, double zeroLine);
[[nodiscard]] QRectF desktopRect(const Rect &points, double zeroLine);

} // namespace corvane
