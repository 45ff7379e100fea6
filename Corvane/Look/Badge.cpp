// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Badge.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Symbols.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace corvane::look {

namespace {

/// A rectangle whose corners start to bend gradually, unlike the abrupt start of a circular arc. Each is a
/// quarter of a superellipse that begins half as far again from the corner as an arc of `radius` would, and
/// crosses the diagonal where the arc does.
QPainterPath continuousRoundedRect(const QRectF &area, double radius)
{
    const double extent = std::min({1.5 * radius, area.width() / 2, area.height() / 2});
    const double onDiagonal = radius * (1 - std::numbers::sqrt2 / 2);
    const double exponent = -std::numbers::ln2 / std::log(1 - onDiagonal / extent);
    constexpr int steps = 24;
    // The direction from the superellipse's centre to the rectangle's corner, and the direction in which it
    // is drawn.
    struct Corner {
        double x, y;
        bool isFromSide;
    };
    QPainterPath path;
    for (const Corner corner :
         {Corner{1, -1, false}, Corner{1, 1, true}, Corner{-1, 1, false}, Corner{-1, -1, true}}) {
        const QPointF edge(corner.x > 0 ? area.right() : area.left(),
                           corner.y > 0 ? area.bottom() : area.top());
        const QPointF middle = edge - QPointF(corner.x, corner.y) * extent;
        for (int step = 0; step <= steps; ++step) {
            const double share = static_cast<double>(corner.isFromSide ? steps - step : step) / steps;
            const double angle = share * std::numbers::pi / 2;
            const double x = std::pow(std::sin(angle), 2 / exponent) * extent;
            const double y = std::pow(std::cos(angle), 2 / exponent) * extent;
            const QPointF point = middle + QPointF(corner.x * x, corner.y * y);
            if (path.elementCount() == 0) {
                path.moveTo(point);
            } else {
                path.lineTo(point);
            }
        }
    }
    path.closeSubpath();
    return path;
}

/// The accent, darkened until white is legible on it.
QColor ground(const QPalette &palette)
{
    QColor ground = color(Ink::accent, palette);
    while (ground.lightnessF() > badge::greatestLightness) {
        ground = ground.darker(110);
    }
    return ground;
}

} // namespace

Badge::Badge(const QString &symbolName, QWidget *parent) : QWidget(parent), m_symbolName(symbolName)
{
    setFixedSize(badge::side, badge::side);
}

void Badge::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = ground(palette());
    QLinearGradient gradient(0, 0, 0, height());
    gradient.setColorAt(0, color.lighter(badge::lighterAtTop));
    gradient.setColorAt(1, color);
    painter.fillPath(continuousRoundedRect(rect(), badge::cornerRadius), gradient);
    const double inset = (badge::side - badge::symbolSize) / 2.0;
    painter.drawPixmap(QPointF(inset, inset), symbolPixmap(m_symbolName, badge::symbolSize, white(1),
                                                           devicePixelRatioF(), SymbolWeight::bold));
}

} // namespace corvane::look
