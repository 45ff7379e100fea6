// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Paragraph.h"

#include <QPainter>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>

namespace corvane::look {

namespace {

/// Breaks the text of `layout` into lines of `width`; returns their total height.
int breakIntoLines(QTextLayout &layout, int width, Qt::LayoutDirection direction)
{
    QTextOption option((direction == Qt::LeftToRight ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignAbsolute);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(layout.text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    layout.setTextOption(option);
    double y = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(width, 1));
        line.setPosition({0, y});
        y += std::ceil(line.height());
    }
    layout.endLayout();
    return static_cast<int>(y);
}

} // namespace

int paragraphHeight(const QString &text, const QFont &font, int width)
{
    if (text.isEmpty()) {
        return 0;
    }
    QTextLayout layout(text, font);
    return breakIntoLines(layout, width, Qt::LeftToRight);
}

void paintParagraph(QPainter &painter, QPoint topLeft, int width, const QString &text, const QFont &font,
                    Qt::LayoutDirection direction)
{
    if (text.isEmpty()) {
        return;
    }
    QTextLayout layout(text, font);
    breakIntoLines(layout, width, direction);
    layout.draw(&painter, topLeft);
}

} // namespace corvane::look
