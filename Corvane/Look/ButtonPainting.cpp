// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/ButtonPainting.h"

#include "Corvane/Look/Contrast.h"
#include "Corvane/Look/Controls.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Painting.h"
#include "Corvane/Look/SymbolTurn.h"
#include "Corvane/Look/Symbols.h"

#include <QPainter>
#include <QStyleOption>

#include <cmath>

namespace corvane::look {

namespace {

/// The width of the symbol, including the gap to the text if there is one.
int symbolRoom(const QStyleOptionButton &option, const QWidget *button)
{
    if (symbolOf(button).isEmpty()) {
        return 0;
    }
    return symbolSize(button->font()) + (option.text.isEmpty() ? 0 : control::symbolSpacing);
}

int inset(Role role)
{
    switch (role) {
    case Role::bordered:
    case Role::prominent:
        return control::horizontalPadding;
    case Role::command:
        return control::rowInset;
    case Role::quietLink:
        return space::tight;
    case Role::segment:
    case Role::search:
        return space::small;
    }
    Q_UNREACHABLE();
}

int padding(Role role)
{
    switch (role) {
    case Role::bordered:
    case Role::prominent:
        return control::verticalPadding;
    case Role::command:
    case Role::segment:
    case Role::search:
        return control::rowPadding;
    case Role::quietLink:
        return space::hair;
    }
    Q_UNREACHABLE();
}

void paintGround(QPainter &painter, const QStyleOptionButton &option, Role role, const QPalette &colors)
{
    const QRectF area = option.rect;
    switch (role) {
    case Role::command:
        fillRounded(painter, area, control::cornerRadius, color(Ink::primary, colors, groundOpacity(option)));
        break;
    case Role::bordered:
        fillRounded(painter, area, control::cornerRadius, cardColor(colors));
        fillRounded(painter, area, control::cornerRadius,
                    color(Ink::primary, colors, groundOpacity(option, 0.03)));
        strokeRounded(painter, area, control::cornerRadius, edgeColor(colors));
        break;
    case Role::prominent:
        fillRounded(painter, area, control::cornerRadius, accentGround(colors));
        // Darkened when hovered or pressed: lightening would reduce the contrast of the white text.
        fillRounded(painter, area, control::cornerRadius, black(1.5 * groundOpacity(option)));
        strokeRounded(painter, area, control::cornerRadius, accentEdge(colors));
        break;
    case Role::quietLink:
    case Role::segment:
    case Role::search:
        break;
    }
}

QColor textColor(const QStyleOptionButton &option, Role role, const QPalette &colors)
{
    switch (role) {
    case Role::bordered:
    case Role::command:
    case Role::segment:
    case Role::search:
        return color(Ink::primary, colors);
    case Role::prominent:
        return color(Ink::onAccent, colors);
    case Role::quietLink:
        if (option.state.testFlag(QStyle::State_Sunken)) {
            return color(Ink::accent, colors);
        }
        return color(option.state.testFlag(QStyle::State_MouseOver) ? Ink::primary : Ink::secondary, colors);
    }
    Q_UNREACHABLE();
}

/// The text of a command at the start of the row, wrapped if needed, and its keys at the end.
void paintCommandText(QPainter &painter, const QStyleOptionButton &option, const QWidget *button,
                      const QPalette &colors)
{
    const QRect room = option.rect.adjusted(control::rowInset, 0, -control::rowInset, 0);
    const bool isLeftToRight = option.direction == Qt::LeftToRight;
    const bool breaks = pushButtonSize(option, button).width() > option.rect.width();
    const QRect line(isLeftToRight ? room.left()
                                   : room.right() - option.fontMetrics.horizontalAdvance(option.text),
                     0, option.fontMetrics.horizontalAdvance(option.text) + 1, option.rect.height());
    painter.drawText(breaks ? room : line,
                     static_cast<int>(breaks ? Qt::TextWordWrap : Qt::TextSingleLine) | Qt::AlignLeft |
                         Qt::AlignVCenter,
                     option.text);
    painter.setPen(color(Ink::secondary, colors));
    painter.drawText(room,
                     static_cast<int>(isLeftToRight ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute |
                         Qt::AlignVCenter | Qt::TextSingleLine,
                     keyTextOf(button));
}

/// `symbol` at `topLeft`, rotated about its centre.
void paintSymbol(QPainter &painter, QPointF topLeft, const QPixmap &symbol, double degrees)
{
    if (degrees == 0) {
        painter.drawPixmap(topLeft, symbol);
        return;
    }
    const QSizeF half = symbol.deviceIndependentSize() / 2;
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(topLeft + QPointF(half.width(), half.height()));
    painter.rotate(degrees);
    painter.drawPixmap(QPointF(-half.width(), -half.height()), symbol);
    painter.restore();
}

} // namespace

QSize pushButtonSize(const QStyleOptionButton &option, const QWidget *button)
{
    const Role role = roleOf(button);
    int width =
        option.fontMetrics.horizontalAdvance(option.text) + symbolRoom(option, button) + 2 * inset(role);
    if (const QString keys = keyTextOf(button); !keys.isEmpty()) {
        width += space::large + option.fontMetrics.horizontalAdvance(keys);
    }
    return {width, option.fontMetrics.height() + 2 * padding(role)};
}

void paintPushButton(QPainter &painter, const QStyleOptionButton &option, const QWidget *button)
{
    const ControlPainter guard(painter, option);
    const Role role = roleOf(button);
    const QPalette colors = inkPalette(option);
    paintGround(painter, option, role, colors);
    const QColor ink = textColor(option, role, colors);
    QFont font = painter.font();
    font.setUnderline(role == Role::quietLink);
    painter.setFont(font);
    painter.setPen(ink);
    if (role == Role::command) {
        paintCommandText(painter, option, button, colors);
        return;
    }
    const bool isLeftToRight = option.direction == Qt::LeftToRight;
    const int room = symbolRoom(option, button);
    const int textWidth = option.fontMetrics.horizontalAdvance(option.text);
    const double left = (option.rect.width() - room - textWidth) / 2.0;
    if (const QString symbol = symbolOf(button); !symbol.isEmpty()) {
        const int size = symbolSize(button->font());
        const double symbolLeft = isLeftToRight ? left : left + textWidth + room - size;
        paintSymbol(painter, {std::round(symbolLeft), std::round((option.rect.height() - size) / 2.0)},
                    symbolPixmap(symbol, size, ink, painter.device()->devicePixelRatioF()),
                    SymbolTurn::degrees(button));
    }
    painter.drawText(
        QRectF(std::round(isLeftToRight ? left + room : left), 0, textWidth + 1.0, option.rect.height()),
        static_cast<int>(Qt::TextSingleLine) | Qt::AlignLeft | Qt::AlignVCenter, option.text);
}

QSize segmentSize(const QStyleOptionButton &option)
{
    return {option.fontMetrics.horizontalAdvance(option.text) + 2 * inset(Role::segment),
            option.fontMetrics.height() + 2 * padding(Role::segment)};
}

void paintSegment(QPainter &painter, const QStyleOptionButton &option)
{
    const ControlPainter guard(painter, option);
    const QPalette colors = inkPalette(option);
    const QRectF area = QRectF(option.rect).adjusted(space::hair, space::hair, -space::hair, -space::hair);
    constexpr double radius = control::cornerRadius - 1;
    if (option.state.testFlag(QStyle::State_On)) {
        // Lighter than its neighbours, in dark mode as well.
        fillRounded(painter, area, radius,
                    isDark(colors) ? over(color(Ink::primary, colors, 0.24), colors.color(QPalette::Window))
                                   : cardColor(colors));
        strokeRounded(painter, area, radius, separatorColor(colors));
        fillRounded(painter, area, radius, color(Ink::primary, colors, groundOpacity(option) / 2));
    } else {
        fillRounded(painter, area, radius, color(Ink::primary, colors, groundOpacity(option)));
    }
    painter.setPen(color(Ink::primary, colors));
    painter.drawText(option.rect, Qt::AlignCenter | Qt::TextSingleLine, option.text);
}

void paintToolButtonGround(QPainter &painter, const QStyleOption &option)
{
    const ControlPainter guard(painter, option);
    fillRounded(painter, option.rect, control::cornerRadius,
                color(Ink::primary, inkPalette(option), groundOpacity(option)));
}

} // namespace corvane::look
