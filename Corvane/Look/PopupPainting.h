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

/// How looks what comes up over a window for a moment: lists of choices, menus, calendars, tool tips. Each is
/// a card with a shadow, which is a part of its window; where no window can be partly transparent it is the
/// card alone, with its corners cut off.
namespace corvane::look {

/// What the shadow takes at each side, or nothing.
[[nodiscard]] QMargins popupShadow(bool isComposited);

/// The same, and what lies between the card's edge and its content.
[[nodiscard]] QMargins popupMargins(bool isComposited);

void paintPopup(QPainter &painter, const QRect &area, const QPalette &palette, bool isComposited);

/// What is left of an area of `size` when its corners are cut off.
[[nodiscard]] QRegion roundedRegion(const QSize &size, double cornerRadius);

[[nodiscard]] QSize menuItemSize(const QStyleOptionMenuItem &option);
void paintMenuItem(QPainter &painter, const QStyleOptionMenuItem &option);

/// From the edge of a list's content to the text of an item: the place of the check mark.
[[nodiscard]] int menuTextInset(const QStyleOption &option);

void paintToolTip(QPainter &painter, const QStyleOption &option);

} // namespace corvane::look
