// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/StatusBell.h"

#include <QPainter>
#include <QPainterPath>

namespace corvane {

namespace {

// The bell on a field of 16 by 16: knob, body with its flaring lip, clapper.
QPainterPath bell()
{
    QPainterPath body;
    body.moveTo(8, 2.2);
    body.cubicTo(11.2, 2.2, 12.4, 4.6, 12.4, 7.2);
    body.cubicTo(12.4, 9.6, 13.0, 10.6, 14.2, 11.8);
    body.lineTo(1.8, 11.8);
    body.cubicTo(3.0, 10.6, 3.6, 9.6, 3.6, 7.2);
    body.cubicTo(3.6, 4.6, 4.8, 2.2, 8, 2.2);
    body.closeSubpath();
    QPainterPath knob;
    knob.addEllipse(QPointF(8, 2.0), 1.1, 1.1);
    QPainterPath clapper;
    clapper.moveTo(5.9, 12.8);
    clapper.lineTo(10.1, 12.8);
    clapper.cubicTo(10.1, 15.4, 5.9, 15.4, 5.9, 12.8);
    clapper.closeSubpath();
    return body.united(knob) + clapper;
}

QImage image(int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 16.0, size / 16.0);
    const QPainterPath path = bell();
    painter.strokePath(path, QPen(QColor(24, 26, 31, 235), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.fillPath(path, QColor(250, 250, 250));
    painter.end();
    // An image keeps the buffers of its painting, forty kilobytes; its copy has none.
    return image.copy();
}

} // namespace

QList<QImage> statusBellImages()
{
    QList<QImage> images;
    for (const int size : {16, 22, 24, 32, 48, 64}) {
        images.append(image(size));
    }
    return images;
}

} // namespace corvane
