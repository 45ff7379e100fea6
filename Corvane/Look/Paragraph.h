// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFont>
#include <QPoint>
#include <QString>

class QPainter;

/// Plain text that a widget paints itself, wrapped to a width. A word that is wider is broken.
namespace corvane::look {

/// The height of `text` in `font` at `width`; 0 if it is empty.
[[nodiscard]] int paragraphHeight(const QString &text, const QFont &font, int width);

/// Paints `text` with the painter's pen. Right-to-left text keeps its own direction; `direction` is that of
/// the widget and decides the alignment.
void paintParagraph(QPainter &painter, QPoint topLeft, int width, const QString &text, const QFont &font,
                    Qt::LayoutDirection direction);

} // namespace corvane::look
