// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Painting.h"

#include "Corvane/Look/Look.h"

#include <QPainter>
#include <QStyleOption>

namespace corvane::look {

void fillRounded(QPainter &painter, const QRectF &area, double cornerRadius, const QColor &color)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(area, cornerRadius, cornerRadius);
}

void strokeRounded(QPainter &painter, const QRectF &area, double cornerRadius, const QColor &color,
                   double width)
{
    const double inset = width / 2;
    painter.setPen(QPen(color, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(area.adjusted(inset, inset, -inset, -inset), cornerRadius - inset,
                            cornerRadius - inset);
}

QPalette inkPalette(const QStyleOption &option)
{
    QPalette palette = option.palette;
    if (!option.state.testFlag(QStyle::State_Enabled)) {
        palette.setCurrentColorGroup(QPalette::Inactive);
    }
    return palette;
}

double groundOpacity(const QStyleOption &option, double atRest)
{
    if (!option.state.testFlag(QStyle::State_Enabled)) {
        return atRest;
    }
    if (option.state.testFlag(QStyle::State_Sunken)) {
        return atRest + control::pressedOpacity;
    }
    return option.state.testFlag(QStyle::State_MouseOver) ? atRest + control::hoverOpacity : atRest;
}

bool showsFocus(const QStyleOption &option)
{
    return option.state.testFlag(QStyle::State_HasFocus) && option.state.testFlag(QStyle::State_Active) &&
           option.state.testFlag(QStyle::State_KeyboardFocusChange);
}

ControlPainter::ControlPainter(QPainter &painter, const QStyleOption &option) : m_painter(painter)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (!option.state.testFlag(QStyle::State_Enabled)) {
        painter.setOpacity(control::disabledOpacity);
    }
}

ControlPainter::~ControlPainter()
{
    m_painter.restore();
}

} // namespace corvane::look
