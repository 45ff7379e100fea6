// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMargins>
#include <QRegion>
#include <QSize>

class QPainter;
class QPalette;
class QStyleOption;
class QStyleOptionMenuItem;

/// Paints popups: lists of choices, menus, calendars, tool tips. Each is a card with a shadow inside its
/// window; where windows cannot be translucent (`isComposited` is false), it is only the card, with its
/// corners cut off.
namespace corvane::look {

/// The space for the shadow on each side, or none.
[[nodiscard]] QMargins popupShadow(bool isComposited);

/// The same plus the padding between the card's edge and its content.
[[nodiscard]] QMargins popupMargins(bool isComposited);

/// The shadow of a card in its window.
struct Shadow {
    int reach = 0;      ///< beyond the card
    int rise = 0;       ///< it reaches this much less above than below
    double opacity = 0; ///< of the innermost of its layers
};

void paintShadow(QPainter &painter, const QRectF &card, double cornerRadius, const Shadow &shadow);

void paintPopup(QPainter &painter, const QRect &area, const QPalette &palette, bool isComposited);

/// Whether a widget is the window around a picker's list. The toolkit has no public class for it.
[[nodiscard]] bool isListWindow(const QWidget *widget);

/// The area of `size` with rounded corners cut off.
[[nodiscard]] QRegion roundedRegion(const QSize &size, double cornerRadius);

[[nodiscard]] QSize menuItemSize(const QStyleOptionMenuItem &option);
void paintMenuItem(QPainter &painter, const QStyleOptionMenuItem &option);

/// From the edge of a list's content to an item's text: the space for the check mark.
[[nodiscard]] int menuTextInset(const QStyleOption &option);

void paintToolTip(QPainter &painter, const QStyleOption &option);

} // namespace corvane::look
