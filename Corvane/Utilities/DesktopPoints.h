// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Geometry.h"

#include <QRectF>

namespace corvane {

/// Converts between desktop coordinates, with y downwards, and points, with y upwards. Both are logical
/// pixels and share x. `zeroLine` is the desktop's y at which the upward y is 0: the lower edge of the
/// primary screen, so that a single screen has its origin at (0, 0).
[[nodiscard]] inline Rect pointsUp(const QRectF &desktop, double zeroLine)
{
    return {desktop.x(), zeroLine - desktop.bottom(), desktop.width(), desktop.height()};
}

[[nodiscard]] inline Point pointsUp(const QPointF &desktop, double zeroLine)
{
    return {desktop.x(), zeroLine - desktop.y()};
}

[[nodiscard]] inline QRectF desktopRect(const Rect &points, double zeroLine)
{
    return {points.x, zeroLine - points.maxY(), points.width, points.height};
}

} // namespace corvane
