// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/FieldPainting.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Painting.h"
#include "Corvane/Look/Symbols.h"

#include <QPainter>
#include <QStyleOption>

#include <cmath>

using namespace Qt::StringLiterals;

namespace corvane::look {

namespace {

int pickerSymbolSize(const QFontMetrics &metrics)
{
    return metrics.ascent();
}

int stepSymbolSize(const QFontMetrics &metrics)
{
    return static_cast<int>(std::lround(pickerSymbolSize(metrics) * control::stepperShare));
}

} // namespace

int fieldHeight(const QFontMetrics &metrics)
{
    return metrics.height() + 2 * control::verticalPadding;
}

void paintField(QPainter &painter, const QStyleOption &option, bool hasFocus)
{
    const ControlPainter guard(painter, option);
    const QPalette colors = inkPalette(option);
    const QRectF area = option.rect;
    const bool isTouched =
        option.state.testFlag(QStyle::State_Enabled) && option.state.testFlag(QStyle::State_MouseOver);
    fillRounded(painter, area, control::cornerRadius, fieldColor(colors));
    if (isTouched) {
        fillRounded(painter, area, control::cornerRadius,
                    color(Ink::primary, colors, control::hoverOpacity / 2));
    }
    strokeRounded(painter, area, control::cornerRadius, hasFocus ? accentEdge(colors) : edgeColor(colors));
}

QSize pickerSize(const QStyleOptionComboBox &option, int textWidth)
{
    return {textWidth + 2 * control::horizontalPadding + control::symbolSpacing +
                pickerSymbolSize(option.fontMetrics),
            fieldHeight(option.fontMetrics)};
}

void paintPicker(QPainter &painter, const QStyleOptionComboBox &option)
{
    paintField(painter, option, showsFocus(option));
    const ControlPainter guard(painter, option);
    if (option.state.testFlag(QStyle::State_Sunken)) {
        fillRounded(painter, option.rect, control::cornerRadius,
                    color(Ink::primary, inkPalette(option), control::pressedOpacity));
    }
    const int side = pickerSymbolSize(option.fontMetrics);
    const QRect symbol(option.rect.width() - control::horizontalPadding - side,
                       (option.rect.height() - side) / 2, side, side);
    const Ink ink = option.state.testFlag(QStyle::State_MouseOver) ? Ink::primary : Ink::secondary;
    painter.drawPixmap(QStyle::visualRect(option.direction, option.rect, symbol).topLeft(),
                       symbolPixmap(u"chevron.up.chevron.down"_s, side, color(ink, inkPalette(option)),
                                    painter.device()->devicePixelRatioF()));
}

void paintPickerText(QPainter &painter, const QStyleOptionComboBox &option)
{
    const ControlPainter guard(painter, option);
    const QRect text = option.rect.adjusted(
        control::horizontalPadding, 0,
        -control::horizontalPadding - control::symbolSpacing - pickerSymbolSize(option.fontMetrics), 0);
    painter.setPen(color(Ink::primary, inkPalette(option)));
    // "5 seconds" keeps its own direction on a right-to-left desktop.
    painter.setLayoutDirection(option.currentText.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    painter.drawText(QStyle::visualRect(option.direction, option.rect, text),
                     static_cast<int>(option.direction == Qt::LeftToRight ? Qt::AlignLeft : Qt::AlignRight) |
                         Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextSingleLine,
                     option.currentText);
}

QSize spinBoxSize(const QStyleOptionSpinBox &option, int textWidth)
{
    const int buttons = stepSymbolSize(option.fontMetrics) + 2 * space::small;
    return {fieldInset + textWidth +
                (option.buttonSymbols == QAbstractSpinBox::NoButtons ? fieldInset : buttons),
            fieldHeight(option.fontMetrics)};
}

QRect spinBoxPart(const QStyleOptionSpinBox &option, QStyle::SubControl part)
{
    const QRect all = option.rect;
    const bool hasButtons = option.buttonSymbols != QAbstractSpinBox::NoButtons;
    const int buttons = hasButtons ? stepSymbolSize(option.fontMetrics) + 2 * space::small : fieldInset;
    const int half = all.height() / 2;
    QRect place;
    switch (part) {
    case QStyle::SC_SpinBoxUp:
        place = QRect(all.width() - buttons, 0, buttons, half);
        break;
    case QStyle::SC_SpinBoxDown:
        place = QRect(all.width() - buttons, half, buttons, all.height() - half);
        break;
    case QStyle::SC_SpinBoxEditField:
        place = all.adjusted(fieldInset, 1, -buttons, -1);
        break;
    default:
        return all;
    }
    if (!hasButtons && part != QStyle::SC_SpinBoxEditField) {
        return {};
    }
    return QStyle::visualRect(option.direction, all, place);
}

void paintSpinBox(QPainter &painter, const QStyleOptionSpinBox &option)
{
    // Unlike a button, a field shows the focus after a click, too: the next key goes there.
    paintField(painter, option,
               option.state.testFlag(QStyle::State_HasFocus) && option.state.testFlag(QStyle::State_Active));
    if (option.buttonSymbols == QAbstractSpinBox::NoButtons) {
        return;
    }
    const ControlPainter guard(painter, option);
    const int side = stepSymbolSize(option.fontMetrics);
    const auto paintArrow = [&](QStyle::SubControl part, const QString &symbol, int shift) {
        const QRect area = spinBoxPart(option, part);
        const bool isTouched =
            option.activeSubControls.testFlag(part) && option.state.testFlag(QStyle::State_MouseOver);
        const bool isPressed = isTouched && option.state.testFlag(QStyle::State_Sunken);
        painter.drawPixmap(area.x() + (area.width() - side) / 2,
                           area.y() + (area.height() - side) / 2 + shift,
                           symbolPixmap(symbol, side,
                                        color(isPressed   ? Ink::accent
                                              : isTouched ? Ink::primary
                                                          : Ink::secondary,
                                              inkPalette(option)),
                                        painter.device()->devicePixelRatioF()));
    };
    // Each arrow is a point nearer to the other than the centre of its half.
    paintArrow(QStyle::SC_SpinBoxUp, u"chevron.up"_s, 1);
    paintArrow(QStyle::SC_SpinBoxDown, u"chevron.down"_s, -1);
}

} // namespace corvane::look
