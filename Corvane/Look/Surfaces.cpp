// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Surfaces.h"

#include "Corvane/Look/Look.h"

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
    constexpr double inset = control::focusRingWidth / 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color(Ink::accent, palette), control::focusRingWidth));
    painter.drawRoundedRect(area.adjusted(inset, inset, -inset, -inset), cornerRadius, cornerRadius);
    painter.restore();
}

void paintFocusRingOnAccent(QPainter &painter, const QRectF &area, double cornerRadius,
                            const QPalette &palette)
{
    constexpr double inset = 2.5;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color(Ink::onAccent, palette), 1.5));
    painter.drawRoundedRect(area.adjusted(inset, inset, -inset, -inset), cornerRadius - 2, cornerRadius - 2);
    painter.restore();
}

} // namespace corvane::look
