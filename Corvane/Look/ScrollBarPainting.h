// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRect>
#include <QStyle>

class QPainter;
class QStyleOptionSlider;

/// Paints scroll bars: a slim thumb over the content, thicker under the pointer.
namespace corvane::look {

[[nodiscard]] QRect scrollBarPart(const QStyleOptionSlider &bar, QStyle::SubControl part);
void paintScrollBar(QPainter &painter, const QStyleOptionSlider &bar);

} // namespace corvane::look
