// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Banners/DesktopGeometry.h"

#include <QGuiApplication>
#include <QScreen>

namespace corvane {

namespace {

double zeroLine()
{
    const QScreen *primary = QGuiApplication::primaryScreen();
    return primary != nullptr ? QRectF(primary->geometry()).bottom() : 0;
}

} // namespace

Rect pointsUp(const QRectF &desktop)
{
    return pointsUp(desktop, zeroLine());
}

Point pointsUp(const QPointF &desktop)
{
    return pointsUp(desktop, zeroLine());
}

QRectF desktopRect(const Rect &points)
{
    return desktopRect(points, zeroLine());
}

} // namespace corvane
