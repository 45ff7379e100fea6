// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/X11/DesktopGeometry.h"

#include <QGuiApplication>
#include <QScreen>

namespace corvane {

namespace {

/// The desktop's y of the line that is 0 upwards.
double zeroLine()
{
    const QScreen *primary = QGuiApplication::primaryScreen();
    return primary != nullptr ? QRectF(primary->geometry()).bottom() : 0;
}

} // namespace

Rect pointsUp(const QRectF &desktop)
{
    return {desktop.x(), zeroLine() - desktop.bottom(), desktop.width(), desktop.height()};
}

Point pointsUp(const QPointF &desktop)
{
    return {desktop.x(), zeroLine() - desktop.y()};
}

QRectF desktopRect(const Rect &points)
{
    return {points.x, zeroLine() - points.maxY(), points.width, points.height};
}

} // namespace corvane
