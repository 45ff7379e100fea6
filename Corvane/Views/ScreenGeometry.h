// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/Screens.h"

#include <QRect>

#include <vector>

namespace corvane {

/// The screen that contains `point`, or the nearest one, since desktops may report a point on no screen;
/// `mainScreen` if `screens` is empty.
[[nodiscard]] Screen screenAt(Point point, const std::vector<Screen> &screens, const Screen &mainScreen);

/// `rect` in the toolkit's coordinates of the desktop, y downwards.
[[nodiscard]] QRect pointsDown(const Rect &rect);

} // namespace corvane
