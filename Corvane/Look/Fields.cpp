// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Fields.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Surfaces.h"
#include "Corvane/Look/Symbols.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace corvane::look {

void paintField(const QWidget &field, bool hasFocus)
{
    QPainter painter(const_cast<QWidget *>(&field));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    if (!field.isEnabled()) {
        painter.setOpacity(control::disabledOpacity);
    }
    const QRectF area = field.rect();
    painter.setBrush(fieldColor(QGuiApplication::palette()));
    painter.drawRoundedRect(area, control::cornerRadius, control::cornerRadius);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(edgeColor(QGuiApplication::palette()), 1));
    painter.drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), control::cornerRadius - 0.5,
                            control::cornerRadius - 0.5);
    if (hasFocus && field.window()->isActiveWindow()) {
        paintFocusRing(painter, area, control::cornerRadius, field.palette());
    }
}

int fieldHeight(const QFont &font)
{
    return QFontMetrics(font).height() + 2 * control::verticalPadding;
}

TextField::TextField(const QString &placeholder, QWidget *parent) : QLineEdit(parent)
{
    setPlaceholderText(placeholder);
    setAccessibleName(placeholder);
    setFrame(false);
    setTextMargins(space::small, 0, space::small, 0);
    setFont(look::font(TextStyle::body));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QPalette own; // the ground is the field's; all else stays the desktop's
    own.setColor(QPalette::Base, Qt::transparent);
    setPalette(own);
}

QSize TextField::sizeHint() const
{
    return {QFontMetrics(font()).averageCharWidth() * 24, fieldHeight(font())};
}

QSize TextField::minimumSizeHint() const
{
    return {QFontMetrics(font()).averageCharWidth() * 8, fieldHeight(font())};
}

bool TextField::event(QEvent *event)
{
    const bool isHandled = QLineEdit::event(event);
    if (event->type() == QEvent::ApplicationFontChange) {
        setFont(look::font(TextStyle::body));
        updateGeometry();
    }
    return isHandled;
}

void TextField::paintEvent(QPaintEvent *event)
{
    paintField(*this, hasFocus());
    QLineEdit::paintEvent(event);
}

Picker::Picker(const QString &label, const QStringList &choices, QWidget *parent) : QComboBox(parent)
{
    setAccessibleName(label);
    addItems(choices);
    setFont(look::font(TextStyle::body));
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setMaxVisibleItems(static_cast<int>(choices.size()));
}

int Picker::symbolSize() const
{
    return QFontInfo(font()).pixelSize();
}

QSize Picker::sizeHint() const
{
    const QFontMetrics metrics(font());
    int widest = 0;
    for (int index = 0; index < count(); ++index) {
        widest = std::max(widest, metrics.horizontalAdvance(itemText(index)));
    }
    return {widest + 2 * control::horizontalPadding + control::symbolSpacing + symbolSize(),
            fieldHeight(font())};
}

QSize Picker::minimumSizeHint() const
{
    return sizeHint();
}

bool Picker::event(QEvent *event)
{
    const bool isHandled = QComboBox::event(event);
    if (event->type() == QEvent::ApplicationFontChange) {
        setFont(look::font(TextStyle::body));
        updateGeometry();
    }
    return isHandled;
}

void Picker::paintEvent(QPaintEvent *)
{
    paintField(*this, showsFocus(*this));
    QPainter painter(this);
    if (!isEnabled()) {
        painter.setOpacity(control::disabledOpacity);
    }
    const int side = symbolSize();
    const QRect text = rect().adjusted(control::horizontalPadding, 0,
                                       -control::horizontalPadding - control::symbolSpacing - side, 0);
    painter.setFont(font());
    painter.setPen(color(Ink::primary, palette()));
    // "5 seconds" keeps its order, whichever way the desktop is read.
    painter.setLayoutDirection(currentText().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    painter.drawText(QStyle::visualRect(layoutDirection(), rect(), text),
                     static_cast<int>(isLeftToRight() ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignAbsolute |
                         Qt::AlignVCenter | Qt::TextSingleLine,
                     currentText());
    const QRect symbol(width() - control::horizontalPadding - side, (height() - side) / 2, side, side);
    painter.drawPixmap(QStyle::visualRect(layoutDirection(), rect(), symbol).topLeft(),
                       symbolPixmap(u"chevron.up.chevron.down"_s, side, color(Ink::secondary, palette()),
                                    devicePixelRatioF()));
}

void Picker::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

} // namespace corvane::look
