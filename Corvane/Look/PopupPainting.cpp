// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/PopupPainting.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Painting.h"
#include "Corvane/Look/Symbols.h"

#include <QPainter>
#include <QStyleOption>

#include <cmath>

using namespace Qt::StringLiterals;

namespace corvane::look {

QMargins popupShadow(bool isComposited)
{
    constexpr int reach = popup::shadowReach;
    return isComposited ? QMargins(reach, reach - popup::shadowRise, reach, reach) : QMargins();
}

QMargins popupMargins(bool isComposited)
{
    return popupShadow(isComposited) + popup::padding;
}

void paintShadow(QPainter &painter, const QRectF &card, double cornerRadius, const Shadow &shadow)
{
    // Layers, each a little smaller, so that the shadow fades outwards.
    for (int step = shadow.reach; step > 0; --step) {
        const double share = 1.0 - double(step) / shadow.reach;
        fillRounded(painter, card.marginsAdded(QMarginsF(step, step - shadow.rise, step, step)),
                    cornerRadius + step, black(shadow.opacity * share * share));
    }
}

void paintPopup(QPainter &painter, const QRect &area, const QPalette &palette, bool isComposited)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF card = area.marginsRemoved(popupShadow(isComposited));
    if (isComposited) {
        paintShadow(
            painter, card, popup::cornerRadius,
            {.reach = popup::shadowReach, .rise = popup::shadowRise, .opacity = popup::shadowOpacity});
    }
    fillRounded(painter, card, popup::cornerRadius, fieldColor(palette));
    strokeRounded(painter, card, popup::cornerRadius, color(Ink::primary, palette, popup::edgeOpacity));
    painter.restore();
}

bool isListWindow(const QWidget *widget)
{
    return widget != nullptr && widget->inherits("QComboBoxPrivateContainer");
}

QRegion roundedRegion(const QSize &size, double cornerRadius)
{
    QRegion region;
    for (int y = 0; y < size.height(); ++y) {
        const double fromEdge = std::min(y + 0.5, size.height() - y - 0.5);
        const double missing = cornerRadius - fromEdge;
        const double inset =
            missing > 0 ? cornerRadius - std::sqrt(cornerRadius * cornerRadius - missing * missing) : 0;
        const int left = static_cast<int>(std::round(inset));
        region += QRect(left, y, size.width() - 2 * left, 1);
    }
    return region;
}

int menuTextInset(const QStyleOption &option)
{
    return space::small + option.fontMetrics.ascent() + space::tight;
}

QSize menuItemSize(const QStyleOptionMenuItem &option)
{
    if (option.menuItemType == QStyleOptionMenuItem::Separator) {
        return {1, 2 * space::tight + 1};
    }
    const QString text = option.text.section(u'\t', 0, 0);
    return {menuTextInset(option) + option.fontMetrics.horizontalAdvance(text) + space::medium,
            option.fontMetrics.height() + 2 * control::rowPadding + space::hair};
}

void paintMenuItem(QPainter &painter, const QStyleOptionMenuItem &option)
{
    const ControlPainter guard(painter, option);
    const QPalette colors = inkPalette(option);
    if (option.menuItemType == QStyleOptionMenuItem::Separator) {
        painter.fillRect(QRect(option.rect.left() + space::small, option.rect.center().y(),
                               option.rect.width() - 2 * space::small, 1),
                         separatorColor(colors));
        return;
    }
    const bool isChosen =
        option.state.testFlag(QStyle::State_Selected) && option.state.testFlag(QStyle::State_Enabled);
    if (isChosen) {
        fillRounded(painter, option.rect, control::cornerRadius, accentGround(colors));
    }
    const QColor ink = isChosen ? color(Ink::onAccent, colors) : colors.color(QPalette::Text);
    const bool isLeftToRight = option.direction == Qt::LeftToRight;
    if (option.checkType != QStyleOptionMenuItem::NotCheckable && option.checked) {
        const int side = option.fontMetrics.ascent();
        const QRect mark(option.rect.left() + space::small,
                         option.rect.top() + (option.rect.height() - side) / 2, side, side);
        painter.drawPixmap(QStyle::visualRect(option.direction, option.rect, mark).topLeft(),
                           symbolPixmap(u"checkmark"_s, side, ink, painter.device()->devicePixelRatioF()));
    }
    const QRect room = option.rect.adjusted(menuTextInset(option), 0, -space::small, 0);
    const QString text = option.text.section(u'\t', 0, 0);
    painter.setFont(option.font);
    painter.setPen(ink);
    painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    painter.drawText(QStyle::visualRect(option.direction, option.rect, room),
                     static_cast<int>(isLeftToRight ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignAbsolute |
                         Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextHideMnemonic,
                     text);
}

void paintToolTip(QPainter &painter, const QStyleOption &option)
{
    const ControlPainter guard(painter, option);
    fillRounded(painter, option.rect, control::cornerRadius, option.palette.color(QPalette::ToolTipBase));
    strokeRounded(painter, option.rect, control::cornerRadius,
                  color(Ink::primary, option.palette, popup::edgeOpacity));
}

} // namespace corvane::look
