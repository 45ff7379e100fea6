// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/Screens.h"

#include <QRect>

#include <vector>

namespace corvane {

/// The screen that `point` is on; a desktop may tell a point that is on none, which gives the nearest.
/// `mainScreen` where there is no screen.
[[nodiscard]] Screen screenAt(Point point, const std::vector<Screen> &screens, const Screen &mainScreen);

/// `rect` as the toolkit counts: downwards, from the upper edge of the primary screen.
[[nodiscard]] QRect pointsDown(const Rect &rect);

} // namespace corvane
