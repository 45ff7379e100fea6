// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Surfaces.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Painting.h"

#include <QLayout>
#include <QPainter>

#include <utility>

namespace corvane::look {

Surface::Surface(double cornerRadius, Fill fill, QLayout *content, QWidget *parent)
    : QWidget(parent)
    , m_cornerRadius(cornerRadius)
    , m_fill(std::move(fill))
{
    setLayout(content);
}

void Surface::setFill(Fill fill)
{
    m_fill = std::move(fill);
    update();
}

void Surface::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_fill(palette()));
    painter.drawRoundedRect(QRectF(rect()), m_cornerRadius, m_cornerRadius);
}

Divider::Divider(QWidget *parent) : QWidget(parent)
{
    setFixedHeight(1);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void Divider::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), separatorColor(palette()));
}

bool showsFocus(const QWidget &widget)
{
    const QWidget *window = widget.window();
    return widget.hasFocus() && window->isActiveWindow() && window->testAttribute(Qt::WA_KeyboardFocusChange);
}

void paintFocusRing(QPainter &painter, const QRectF &area, double cornerRadius, const QPalette &palette)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    strokeRounded(painter, area, cornerRadius + control::focusRingWidth / 2, color(Ink::accent, palette),
                  control::focusRingWidth);
    painter.restore();
}

void paintFocusRingOnAccent(QPainter &painter, const QRectF &area, double cornerRadius,
                            const QPalette &palette)
{
    constexpr double gap = 1.75; // between the edge of the area and the ring
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    strokeRounded(painter, area.adjusted(gap, gap, -gap, -gap), cornerRadius - 1.25,
                  color(Ink::onAccent, palette), 1.5);
    painter.restore();
}

} // namespace corvane::look
