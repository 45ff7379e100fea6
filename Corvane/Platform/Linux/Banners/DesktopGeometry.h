// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/DesktopPoints.h"

namespace corvane {

/// The conversions for the toolkit's primary screen.
[[nodiscard]] Rect pointsUp(const QRectF &desktop);
[[nodiscard]] Point pointsUp(const QPointF &desktop);
[[nodiscard]] QRectF desktopRect(const Rect &points);

} // namespace corvane
