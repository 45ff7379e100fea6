// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFont>
#include <QPoint>
#include <QString>

class QPainter;

/// Texts that a widget paints by itself, as plain text on as many lines as their width makes of them. A word
/// wider than that is broken.
namespace corvane::look {

/// The height of `text` in `font` at `width`; 0 of an empty one.
[[nodiscard]] int paragraphHeight(const QString &text, const QFont &font, int width);

/// Paints `text` in the painter's pen. A text written from the right keeps its own order, and stands where
/// the others stand, which `direction` tells.
void paintParagraph(QPainter &painter, QPoint topLeft, int width, const QString &text, const QFont &font,
                    Qt::LayoutDirection direction);

} // namespace corvane::look
