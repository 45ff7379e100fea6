// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/ScreenGeometry.h"

#include "Corvane/Utilities/DesktopPoints.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

// The distance of `point` from `rect`; 0 inside.
double distance(Point point, const Rect &rect)
{
    const double x = std::max({rect.minX() - point.x, 0.0, point.x - rect.maxX()});
    const double y = std::max({rect.minY() - point.y, 0.0, point.y - rect.maxY()});
    return std::hypot(x, y);
}

} // namespace

Screen screenAt(Point point, const std::vector<Screen> &screens, const Screen &mainScreen)
{
    const auto inside =
        std::ranges::find_if(screens, [&](const Screen &screen) { return screen.frame.contains(point); });
    if (inside != screens.end()) {
        return *inside;
    }
    const auto nearest = std::ranges::min_element(
        screens, {}, [&](const Screen &screen) { return distance(point, screen.frame); });
    return nearest != screens.end() ? *nearest : mainScreen;
}

QRect pointsDown(const Rect &rect)
{
    return desktopRect(rect, QRectF(QGuiApplication::primaryScreen()->geometry()).bottom()).toRect();
}

} // namespace corvane
